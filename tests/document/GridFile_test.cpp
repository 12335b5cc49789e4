// SPDX-License-Identifier: MIT

// Grid files as a document saves and loads them.

#include <fstream>

#include "DocumentSupport.h"
#include "support/ScriptedHost.h"

namespace {

class GridFile : public testing::Test {
  protected:
    bool Load(std::string_view bytes) {
        ScriptedHost::WriteFile(file, bytes);
        return document.LoadFile(file);
    }
    int ErrorOfLoading(std::string_view bytes) {
        return ErrorOf([&] { Load(bytes); });
    }

    ScriptedHost host;
    GridDocument document;
    const std::string file = host.PathOf("grille.nx3");
};

TEST_F(GridFile, ASavedGridIsOneRecordPerCellAndComesBackWhole) {
    const std::string old = "[]\r\n1=9|1|0\r\n82=1|1|0\r\n[Options]\r\nA=1\r\n";
    ScriptedHost::WriteFile(file, old);
    std::ifstream oldFile(file);
    std::string expected = "[]\r\n";
    for (int i = 1; i <= 81; ++i) {
        const std::string record =
            std::to_string(i % 10) + (i % 3 == 0 ? "|1|" : "|0|") + std::to_string(i * 2 % 1024);
        Set(document, i, record);
        expected += std::to_string(i) + "=" + record + "\r\n";
    }
    ASSERT_TRUE(document.SaveFile(file));
    EXPECT_FALSE(document.Modified());
    EXPECT_EQ(ScriptedHost::ReadFile(file), expected);
    EXPECT_EQ(std::string(std::istreambuf_iterator(oldFile), {}), old) << "replaced, not written over";
    GridDocument other;
    other.EnterValue(1, 5, {});
    ASSERT_TRUE(other.LoadFile(file));
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(StateText(other, i), StateText(document, i)) << i;
    EXPECT_FALSE(other.Modified() || other.CanUndo() || other.CanRedo());
}

TEST_F(GridFile, OnlyTheRecordsOfTheNamelessSectionCount) {
    Set(document, 1, "9|1|1022");
    ASSERT_TRUE(
        Load("1=9|1|0\r\n[Autre]\r\n2=9|1|0\r\n[]\r\n; 3=9|1|0\r\n82=abc\r\nx=y\r\n5=5|0|0\r\n5=6|0|0\r\n"
             "81=\"7|1|36\""));
    for (const auto& [cell, state] :
         {std::pair{1, "0|0|0"}, {2, "0|0|0"}, {3, "0|0|0"}, {5, "5|0|0"}, {81, "7|1|36"}}) {
        EXPECT_EQ(StateText(document, cell), state) << cell;
    }
    // Candidates come from the values, not from the file.
    EXPECT_TRUE(!document.Grid().Cells(80)->Avail(7) && document.Grid().Cells(80)->Avail(9));
    EXPECT_TRUE(Load("")) << "an empty file is an empty grid";
}

TEST_F(GridFile, OnlyWhatOthersMadeOfTheFileIsAChange) {
    document.Path(file);
    EXPECT_FALSE(document.FileChanged()) << "there is none";
    ScriptedHost::WriteFile(file, "[]\n");
    EXPECT_TRUE(document.FileChanged()) << "it came from somewhere else";
    EXPECT_TRUE(document.LoadFile(file) && !document.FileChanged());
    EXPECT_TRUE(document.SaveFile(file) && document.SaveFile(file) && !document.FileChanged());
    EXPECT_EQ(ErrorOfLoading("[]\n1=abc\n"), ErrorNumber::TypeMismatch);
    EXPECT_TRUE(document.FileChanged()) << "it was not read";
    std::remove(file.c_str());
    EXPECT_FALSE(document.FileChanged()) << "nothing is lost";
}

TEST_F(GridFile, WhatCannotBeReadOrWrittenChangesNothing) {
    document.EnterValue(1, 5, {});
    const std::pair<const char*, int> damaged[] = {{"[]\n1=1|1|0\n2=256|1|0\n", ErrorNumber::Overflow},
                                                   {"[]\n1=1|1|0\n81=\n", ErrorNumber::OutOfBounds},
                                                   {"1=1|1|0\n", ErrorNumber::FileFormat},
                                                   {"[Autre]\n1=1|1|0\n", ErrorNumber::FileFormat},
                                                   {"\n", ErrorNumber::FileFormat}};
    for (const auto& [bytes, error] : damaged) EXPECT_EQ(ErrorOfLoading(bytes), error) << bytes;
    for (const std::string& path : {host.PathOf("absent/a.nx3"), host.folder.string(), std::string()}) {
        EXPECT_FALSE(document.LoadFile(path) || document.SaveFile(path)) << path;
    }
    EXPECT_EQ(StateText(document, 1) + StateText(document, 2), "5|0|00|0|0");
    EXPECT_TRUE(document.Modified() && document.CanUndo());
}

}  // namespace
