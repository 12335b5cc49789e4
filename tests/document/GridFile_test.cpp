// Grid files as the window saves and loads them.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

#include "FakeFrame.h"
#include "diagnostics/ErrorHandling.h"

namespace {

class GridFile : public GridWindow {
  protected:
    bool Load(std::string_view bytes) {
        ScriptedHost::WriteFile(file, bytes);
        return grid->LoadFile(QString::fromStdString(file));
    }
    bool Save(const std::string& path) { return grid->SaveFile(QString::fromStdString(path)); }
    int ErrorOfLoading(std::string_view bytes) {
        try {
            Load(bytes);
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    }
    // No file beside the ones named is in the folder.
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(host.folder), {}));
    }

    const std::string file = host.PathOf("grille.nx3");
};

// ---- What is written.

TEST_F(GridFile, WritesOneRecordPerCellInOrderAndNothingOfAnOlderFile) {
    ScriptedHost::WriteFile(file, "[]\r\n1=9|1|0\r\n82=1|1|0\r\n[Options]\r\nA=1\r\n");
    Set(12, "7|1|0");
    Set(13, "0|0|36");
    ASSERT_TRUE(Save(file));
    const std::string bytes = ScriptedHost::ReadFile(file);
    EXPECT_TRUE(bytes.starts_with("[]\r\n1=0|0|0\r\n2=0|0|0\r\n")) << bytes;
    EXPECT_NE(bytes.find("\r\n12=7|1|0\r\n13=0|0|36\r\n14=0|0|0\r\n"), std::string::npos) << bytes;
    EXPECT_TRUE(bytes.ends_with("\r\n81=0|0|0\r\n")) << bytes;
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 82);
}

TEST_F(GridFile, ASavedGridComesBackWhole) {
    for (int i = 1; i <= 81; ++i) {
        Set(i, std::to_string(i % 10) + (i % 3 == 0 ? "|1|" : "|0|") + std::to_string(i * 2 % 1024));
    }
    std::vector<std::string> states;
    for (int i = 1; i <= 81; ++i) states.push_back(State(i));
    ASSERT_TRUE(Save(file));
    wGrid other(frame);
    ASSERT_TRUE(other.LoadFile(QString::fromStdString(file)));
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(RecordText(*other.Grid()->Cells(i)), states[std::size_t(i - 1)]);
}

TEST_F(GridFile, NoNameFailsWithoutAWordOrAFile) {
    Set(1, "5|0|0");
    EXPECT_FALSE(Save(""));
    EXPECT_TRUE(grid->Grid()->Modified());
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(GridFile, APlaceThatCannotBeWrittenIsReportedOnce) {
    Set(1, "5|0|0");
    std::filesystem::create_directory(host.folder / "dossier.nx3");
    for (const char* name : {"absent/grille.nx3", "dossier.nx3"}) {
        host.boxes.clear();
        host.Expect(platform::MessageButton::Ok);
        EXPECT_FALSE(Save(host.PathOf(name)));
        EXPECT_TRUE(LastBox().starts_with("Error Nr 75 : ")) << LastBox();
        EXPECT_TRUE(LastBox().ends_with("Module : wGrid\r\nFunction : SaveFile")) << LastBox();
        EXPECT_EQ(host.boxes.size(), 1U);
        EXPECT_TRUE(grid->Grid()->Modified());
    }
}

TEST_F(GridFile, AFullDiskLeavesTheOldFileWhole) {
    ASSERT_TRUE(Save(file));
    const std::string before = ScriptedHost::ReadFile(file);
    Set(1, "5|0|0");
    host.Expect(platform::MessageButton::Ok);
    // No file may grow beyond 100 bytes for a moment.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    rlimit tight = usual;
    tight.rlim_cur = 100;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    const bool saved = Save(file);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(saved);
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75 : ")) << LastBox();
    EXPECT_TRUE(grid->Grid()->Modified());
    EXPECT_EQ(ScriptedHost::ReadFile(file), before);
    EXPECT_EQ(FilesInFolder(), 1U);
}

// ---- What is read.

TEST_F(GridFile, MissingKeysAreEmptyCells) {
    Set(1, "9|1|1022");
    ASSERT_TRUE(Load("[]\r\n12=7|1|0\r\n13=0|0|36\r\n"));
    EXPECT_EQ(State(1), "0|0|0");
    EXPECT_EQ(State(12), "7|1|0");
    EXPECT_EQ(State(13), "0|0|36");
}

TEST_F(GridFile, WhatDoesNotBelongToTheGridIsIgnored) {
    ASSERT_TRUE(
        Load("1=9|1|0\r\n[Autre]\r\n2=9|1|0\r\n[]\r\n; 3=9|1|0\r\n82=abc\r\nx=y\r\n5=5|0|0\r\n5=6|0|0\r\n"));
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(3) + " " + State(5), "0|0|0 0|0|0 0|0|0 5|0|0");
}

TEST_F(GridFile, FormsThatOtherProgramsWriteAreUnderstood) {
    const std::string records[] = {
        "[]\n12=7|1|36\n",                            // line feeds alone
        "\xEF\xBB\xBF[]\r\n12=7|1|36\r\n",            // byte order mark
        "[]\r\n12=\"7|1|36\"\r\n",                    // quotes
        " [ ] \r\n  12  =  7|1|36  \r\n",             // blanks
        "[]\r\n12=7|1|37",                            // an odd mask, no end of line
        std::string("[]\r\n12=7|1|36\0x|y\r\n", 19),  // all behind a NUL is cut
    };
    for (const std::string& bytes : records) {
        ASSERT_TRUE(Load(bytes)) << bytes;
        EXPECT_EQ(State(12), "7|1|36") << bytes;
    }
}

TEST_F(GridFile, LoadingReplacesTheStateAroundTheCells) {
    Enter(1, "5|0|0");
    frame.hidden = true;
    ASSERT_TRUE(Load("[]\r\n1=7|1|0\r\n"));
    EXPECT_FALSE(grid->Grid()->Modified());
    EXPECT_TRUE(grid->ctrlCells(2).NoMask());
    // Candidates come from the values, not from the file; the old history is gone.
    EXPECT_FALSE(Cell(9).Avail(7));
    EXPECT_TRUE(Cell(9).Avail(5));
    EXPECT_EQ(grid->ctrlCells(1).lblValue().text, "7");
    grid->SetFocus();
    host.Expect(platform::MessageButton::Ok);
    grid->Undo();
    EXPECT_EQ(LastBox(), "Rien à annuler");
}

TEST_F(GridFile, WhatIsNoFileFailsAtOnceAndChangesNothing) {
    Enter(1, "5|0|0");
    const std::string pipe = host.PathOf("tube");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {host.PathOf("absent.nx3"), host.folder.string(), pipe, std::string()}) {
        EXPECT_FALSE(grid->LoadFile(QString::fromStdString(path))) << path;
    }
    EXPECT_EQ(State(1), "5|0|0");
    EXPECT_TRUE(grid->Grid()->Modified());
}

TEST_F(GridFile, ARecordThatDoesNotConvertStopsTheLoadThere) {
    EXPECT_EQ(ErrorOfLoading("[]\n1=1|1|0\n2=256|1|0\n3=3|1|0\n"), ErrorNumber::Overflow);
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(3), "1|1|0 0|0|0 0|0|0");
    EXPECT_EQ(ErrorOfLoading("[]\n1=abc|1|0\n"), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOfLoading("[]\n1=1|vrai|0\n"), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOfLoading("[]\n1=1|0|1e10\n"), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOfLoading("[]\n81=7|1\n"), ErrorNumber::OutOfBounds);
    EXPECT_EQ(ErrorOfLoading("[]\n81=\n"), ErrorNumber::OutOfBounds);
}

}  // namespace
