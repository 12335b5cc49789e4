#pragma once

#include <optional>
#include <string>
#include <vector>

class clsCell;

// A grid file: profile-file text with one section of empty name and the keys 1..81, each
// "value|locked|exclusion mask". Written whole, in one step; read in one parse.
class GridFileWriter {
  public:
    void Put(const clsCell& cell);
    // False, the old file untouched, when not everything reached the disk.
    bool Write(const std::string& path) const;

  private:
    std::string bytes_ = "[]\r\n";
};

class GridFileReader {
  public:
    // False when there is no such file or it cannot be read; never waits on a pipe.
    bool Open(const std::string& path);
    // The record of cell `index`, "0|0|0" when the file has none.
    std::string Record(int index) const;

  private:
    std::vector<std::optional<std::string>> records_;  // of cell i at i - 1
};
