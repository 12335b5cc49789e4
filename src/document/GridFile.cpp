#include "document/GridFile.h"

#include "document/CellState.h"
#include "engine/clsCell.h"
#include "platform/ProfileFile.h"
#include "settings/IniParamProcs.h"

void GridFileWriter::Put(const clsCell& cell) {
    bytes_.append(std::to_string(cell.GridIndex())).append("=").append(RecordText(cell)).append("\r\n");
}

bool GridFileWriter::Write(const std::string& path) const {
    return platform::ReplaceFile(path, bytes_);
}

bool GridFileReader::Open(const std::string& path) {
    platform::ProfileFile file;
    if (file.Read(path) != platform::FileState::Read) return false;
    std::vector<std::string> keys;
    for (int i = 1; i <= 81; ++i) keys.push_back(std::to_string(i));
    records_ = file.Values("", keys);
    return true;
}

std::string GridFileReader::Record(int index) const {
    return IniParamProcs::AsProfileString(records_.at(static_cast<std::size_t>(index - 1)).value_or("0|0|0"));
}
