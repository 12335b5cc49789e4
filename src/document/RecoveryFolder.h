#pragma once

#include <string>
#include <vector>

// The folder of one running copy's recovery files, below the folder of all copies. Held by a lock as long as
// this object lives, or until the process ends, whatever ends it; so a folder that can be locked is a copy's
// that is gone.
class RecoveryFolder {
  public:
    // A new one, its parents made when they are missing; readable by this user alone. Empty when that fails.
    static RecoveryFolder New(const std::string& parent);
    // Those of copies that are gone and left files behind. What is left of others, empty, is removed.
    static std::vector<RecoveryFolder> Abandoned(const std::string& parent);

    RecoveryFolder() = default;
    RecoveryFolder(RecoveryFolder&& other) noexcept;
    RecoveryFolder& operator=(RecoveryFolder&& other) noexcept;
    ~RecoveryFolder();

    explicit operator bool() const { return lock_ >= 0; }
    const std::string& Path() const { return path_; }
    // The path of the file with this number.
    std::string File(int number) const;
    // The paths of all that is there, in the order of their numbers.
    std::vector<std::string> Files() const;
    // Removes everything that is in it, and the folder.
    void Remove();

  private:
    RecoveryFolder(std::string path, int lock) : path_(std::move(path)), lock_(lock) {}
    // Locks a folder that is there; empty when another holds it or it went meanwhile.
    static RecoveryFolder Lock(const std::string& path, int flags);

    std::string path_;
    int lock_ = -1;
};
