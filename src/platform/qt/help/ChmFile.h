// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/qt/help/HelpTables.h"

struct chmFile;
struct chmUnitInfo;

// A compiled help file, opened for reading. Paths of objects begin with "/" and are compared without regard
// to case, as the format wants it.
class ChmFile {
  public:
    // None unless it is, byte for byte, the file that has this digest: the format has no checksum, and its
    // reader library trusts what it reads. What becomes of the file later makes no difference.
    static std::unique_ptr<ChmFile> Open(const QString& path, const QByteArray& digest);
    // SHA-256 in hexadecimal digits.
    static QByteArray DigestOf(const QByteArray& bytes);
    ~ChmFile();
    ChmFile(const ChmFile&) = delete;
    ChmFile& operator=(const ChmFile&) = delete;

    bool Has(const QString& object) const;
    // None if there is no such object or if less of it can be read than its length says.
    std::optional<QByteArray> Read(const QString& object) const;
    QStringList Objects() const;

    const std::vector<HelpEntry>& Contents() const { return contents_; }
    // By name, in the order of the file.
    const std::vector<HelpEntry>& Index() const { return index_; }
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
    void ReadTables();

    chmFile* file_;
    std::map<QString, Object> objects_;  // by path in lower case
    std::vector<HelpEntry> contents_;
    std::vector<HelpEntry> index_;
    QHash<int, QString> topics_;
};
