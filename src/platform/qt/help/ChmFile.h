#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <optional>
#include <vector>

struct chmFile;
struct chmUnitInfo;

// One line of a table of contents. A heading without a topic of its own has an empty path.
struct HelpEntry {
    QString title;
    QString path;   // of an object of the file, "/niveau.htm"
    int depth = 0;  // 0 for the outermost lines
};

// A compiled help file, opened for reading. Paths of objects begin with "/" and are compared without regard
// to case, as the format wants it.
class ChmFile {
  public:
    // None if the file is missing, no plain file, damaged, or has no table of contents.
    static std::unique_ptr<ChmFile> Open(const QString& path);
    ~ChmFile();
    ChmFile(const ChmFile&) = delete;
    ChmFile& operator=(const ChmFile&) = delete;

    bool Has(const QString& object) const;
    // None if there is no such object or if less of it can be read than its length says.
    std::optional<QByteArray> Read(const QString& object) const;
    QStringList Objects() const;

    const std::vector<HelpEntry>& Contents() const { return contents_; }
    // The first topic of the contents.
    QString Home() const;
    // The topic of a help context; empty if the file has none.
    QString TopicOf(int helpContext) const { return topics_.value(helpContext); }

  private:
    struct Object {
        QString path;
        quint64 start = 0;
        quint64 length = 0;
        int space = 0;
    };

    explicit ChmFile(chmFile* file) : file_(file) {}
    static int Collect(chmFile* file, chmUnitInfo* object, void* self);
    void ReadContents();
    void ReadContexts();
    QString ObjectAtEndOf(const QString& path) const;

    chmFile* file_;
    std::map<QString, Object> objects_;  // by path in lower case
    std::vector<HelpEntry> contents_;
    QHash<int, QString> topics_;
};
