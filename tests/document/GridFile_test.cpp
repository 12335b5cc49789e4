// Grid files as a document saves and loads them.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

#include "DocumentSupport.h"
#include "diagnostics/ErrorHandling.h"
#include "support/ScriptedHost.h"

namespace {

class GridFile : public testing::Test {
  protected:
    bool Load(std::string_view bytes) {
        ScriptedHost::WriteFile(file, bytes);
        return document.LoadFile(file);
    }
    int ErrorOfLoading(std::string_view bytes) {
        try {
            Load(bytes);
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    }
    // Of the cells named, one behind the other.
    std::string States(std::initializer_list<int> cells) const {
        std::string states;
        for (const int cell : cells) states += StateText(document, cell) + " ";
        return states;
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(host.folder), {}));
    }

    ScriptedHost host;
    GridDocument document;
    const std::string file = host.PathOf("grille.nx3");
};

TEST_F(GridFile, ASavedGridIsOneRecordPerCellAndComesBackWhole) {
    ScriptedHost::WriteFile(file, "[]\r\n1=9|1|0\r\n82=1|1|0\r\n[Options]\r\nA=1\r\n");
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
    GridDocument other;
    other.EnterValue(1, 5, {});
    ASSERT_TRUE(other.LoadFile(file));
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(StateText(other, i), StateText(document, i)) << i;
    EXPECT_FALSE(other.Modified() || other.CanUndo() || other.CanRedo());
}

TEST_F(GridFile, AFailedSaveLeavesTheOldFileAndTheModifiedMark) {
    ASSERT_TRUE(document.SaveFile(file));
    const std::string before = ScriptedHost::ReadFile(file);
    Set(document, 1, "5|0|0");
    EXPECT_FALSE(document.SaveFile(host.PathOf("absent/grille.nx3")));
    EXPECT_FALSE(document.SaveFile(host.folder.string()));
    // No file may grow beyond 100 bytes for a moment, as on a full disk.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    rlimit tight = usual;
    tight.rlim_cur = 100;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_FALSE(document.SaveFile(file));
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(document.Modified());
    EXPECT_EQ(ScriptedHost::ReadFile(file), before);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(GridFile, OnlyTheRecordsOfTheNamelessSectionCount) {
    Set(document, 1, "9|1|1022");
    ASSERT_TRUE(
        Load("1=9|1|0\r\n[Autre]\r\n2=9|1|0\r\n[]\r\n; 3=9|1|0\r\n82=abc\r\nx=y\r\n5=5|0|0\r\n5=6|0|0\r\n"
             "81=7|1|36"));
    EXPECT_EQ(States({1, 2, 3, 5, 81}), "0|0|0 0|0|0 0|0|0 5|0|0 7|1|36 ");
    // Candidates come from the values, not from the file.
    EXPECT_FALSE(document.Grid().Cells(80)->Avail(7));
    EXPECT_TRUE(document.Grid().Cells(80)->Avail(9));
    ASSERT_TRUE(Load(""));
    EXPECT_EQ(States({5, 81}), "0|0|0 0|0|0 ");
}

TEST_F(GridFile, OnlyWhatOthersMadeOfTheFileIsAChange) {
    document.Path(file);
    EXPECT_FALSE(document.FileChanged()) << "there is none";
    ScriptedHost::WriteFile(file, "[]\n");
    EXPECT_TRUE(document.FileChanged()) << "it came from somewhere else";
    EXPECT_TRUE(document.LoadFile(file) && !document.FileChanged());
    EXPECT_TRUE(document.SaveFile(file) && document.SaveFile(file) && !document.FileChanged());
    GridDocument other;
    EXPECT_TRUE(other.LoadFile(file) && other.SaveFile(file));
    other.Path(file);
    EXPECT_TRUE(document.FileChanged() && !other.FileChanged());
    EXPECT_EQ(ErrorOfLoading("[]\n1=abc\n"), ErrorNumber::TypeMismatch);
    EXPECT_TRUE(document.FileChanged()) << "it was not read";
    std::filesystem::remove(file);
    EXPECT_FALSE(document.FileChanged());
}

TEST_F(GridFile, FormsThatOtherProgramsWriteAreUnderstood) {
    const std::string files[] = {
        "[]\n12=7|1|36\n",                            // line feeds alone
        "\xEF\xBB\xBF[]\r\n12=\"7|1|36\"\r\n",        // byte order mark, quotes
        " [ ] \r\n  12  =  7|1|36  \r\n",             // blanks
        std::string("[]\r\n12=7|1|36\0x|y\r\n", 19),  // all behind a NUL is cut
    };
    for (const std::string& bytes : files) {
        ASSERT_TRUE(Load(bytes)) << bytes;
        EXPECT_EQ(States({12}), "7|1|36 ") << bytes;
    }
}

TEST_F(GridFile, WhatCannotBeReadChangesNothing) {
    document.EnterValue(1, 5, {});
    const std::pair<const char*, int> damaged[] = {{"[]\n1=1|1|0\n2=256|1|0\n", ErrorNumber::Overflow},
                                                   {"[]\n1=1|1|0\n2=abc|1|0\n", ErrorNumber::TypeMismatch},
                                                   {"[]\n1=1|1|0\n81=7|1\n", ErrorNumber::OutOfBounds},
                                                   {"[]\n1=1|1|0\n81=\n", ErrorNumber::OutOfBounds},
                                                   {"1=1|1|0\n", ErrorNumber::FileFormat},
                                                   {"[Autre]\n1=1|1|0\n", ErrorNumber::FileFormat},
                                                   {"\n", ErrorNumber::FileFormat}};
    for (const auto& [bytes, error] : damaged) EXPECT_EQ(ErrorOfLoading(bytes), error) << bytes;
    const std::string pipe = host.PathOf("tube");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {host.PathOf("absent.nx3"), host.folder.string(), pipe, std::string()}) {
        EXPECT_FALSE(document.LoadFile(path)) << path;
    }
    EXPECT_EQ(States({1, 2}), "5|0|0 0|0|0 ");
    EXPECT_TRUE(document.Modified() && document.CanUndo());
}

}  // namespace
