// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Where a desktop looks for what programs publish. Absolute, without a separator at the end.
struct DesktopFolders {
    std::string own;                  // the user's data folder; empty if there is none
    std::vector<std::string> shared;  // the system's, the most important one first
    static DesktopFolders OfEnvironment();
};

// A picture of the program, ready to be written.
struct IconFile {
    int size = 0;  // width and height in pixels; 0: an SVG, for every size
    std::string bytes;
};

// A kind of file and the program that opens it.
struct FileAssociation {
    std::string extension;    // without the dot
    std::string program;      // absolute path
    std::string description;  // what file managers call such a file
};

// Publishes the program's file type in the user's data folder: a MIME type, a desktop entry, icons, and the
// updates of the desktop's own caches. Every routine is silent and quick: the desktop's tools run on their
// own, and those that are not installed are left out. A desktop knows the entry by its file's name, so that
// the user's hides the system's and no menu ever has two; it starts a script that gives way to the system's
// once the program has gone.
class DesktopAssociation {
  public:
    static constexpr std::string_view MimeType = "application/x-ninarix-grid";

    using Icons = std::function<std::vector<IconFile>()>;
    // `icons` is asked only when something is published.
    DesktopAssociation(DesktopFolders folders, Icons icons);
    ~DesktopAssociation();
    DesktopAssociation(const DesktopAssociation&) = delete;
    DesktopAssociation& operator=(const DesktopAssociation&) = delete;

    // The MIME type other than the program's own that the desktop gives to files of this extension; empty if
    // there is none.
    std::string OtherOwner(std::string_view extension) const;

    // Unless the system has an entry that works, a package's: what the user's folder holds of an earlier
    // program is taken back then, so that it hides nothing. False if the program cannot be started from this
    // path or a file cannot be written.
    bool Publish(const FileAssociation& association);

    // The same whatever the system has.
    bool PublishOwn(const FileAssociation& association);

    // Only the files, for packages. The program need not be there yet.
    bool WriteFiles(const FileAssociation& association) const;

    // Adds the icons to what was published without them.
    void CompleteIcons() const;

    // True when the desktop's tools have ended; waits for that no longer than told.
    bool ToolsEnded(std::chrono::milliseconds longest);

  private:
    bool SharedEntryWorks() const;
    void TakeBack();
    bool PublishProgram(const FileAssociation& association) const;
    void PublishIcons() const;
    void UpdateCaches();
    void StartTool(const char* tool, const std::string& folder);

    DesktopFolders folders_;
    Icons icons_;
    std::vector<int> tools_;  // that may still run, by the numbers of their processes
};

}  // namespace platform
