// SPDX-License-Identifier: MIT
#include "settings/IniParamProcs.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

using namespace IniParamProcs;
using namespace std::string_literals;

namespace {

TEST(SettingsFile, ValuesAreCutAt1023BytesButNeverInsideACharacter) {
    for (const std::string& character : {"x"s, "é"s, "€"s, "😀"s}) {
        for (std::size_t before = 1018; before <= 1023; ++before) {
            std::string text(before, 'a');
            for (int i = 0; i < 6; ++i) text += character;
            const std::size_t whole = (1023 - before) / character.size() * character.size();
            EXPECT_EQ(AsProfileString(text), text.substr(0, before + whole)) << character << before;
        }
    }
    EXPECT_EQ(AsProfileString(std::string(2000, '\x80')).size(), 1023U);
    EXPECT_EQ(AsProfileString(std::string(1023, ' ') + "x"), "") << "blanks are trimmed behind the cut";
}

TEST(SettingsFile, ReadsTrimmedFromOneSectionInWhateverSpelling) {
    const ScriptedHost host;
    const std::string file = host.PathOf("Ninarix.ini");
    ScriptedHost::WriteFile(file, "[options]\r\nA=  12  \r\nB=\r\nC=' c '\r\nD=1 \0002\r\nE=\t5\t\r\n"s);
    const char* cases[][2] = {{"a", "12"}, {"B", ""}, {"C", "c"}, {"D", "1"}, {"E", "5"}, {"F", "x"}};
    for (const auto& [key, value] : cases) EXPECT_EQ(ReadIniParam("Options", key, " x "), value) << key;
    WriteIniParam("OPTIONS", "a", "0");
    for (const char* key : {"b", "c", "d", "e"}) DeleteIniParam("Options", key);
    EXPECT_EQ(ScriptedHost::ReadFile(file), "[options]\r\nA=0\r\n");
    DeleteIniSection("Options");
    EXPECT_EQ(ScriptedHost::ReadFile(file), "");
}

// Faults: a value that could not be written is gone, or never gets into the file; a file is written over that
// could not be read; the user is told during the start, twice, never, or the wrong cause.
void CheckThatSettingsLiveOn(const std::string& cause, bool atTheStart,
                             const std::function<void(const std::string& file, int folder)>& hinder) {
    ScriptedHost host;
    const std::string file = IniFilePath(), before = "[S]\r\n; \xE9\r\nA=old\r\nB=old\r\n[T]\r\nC=old\r\n";
    ScriptedHost::WriteFile(file + "~", before);
    ScriptedHost::WriteFile(file, before);
    if (!atTheStart) {
        TellFailures();
        host.Expect(platform::MessageButton::Ok);
    }
    const int folder = open(host.folder.c_str(), O_RDONLY | O_CLOEXEC);
    hinder(file, folder);
    const auto size = std::filesystem::is_regular_file(file) ? std::filesystem::file_size(file) : 0;
    WriteIniParam("s", "a", "new");
    ProfileChanges changes;
    changes.Delete("S", "b");
    changes.DeleteSection("t");
    changes.Write("t", "D", "first");
    changes.Write("S", "E", "a\nb");
    changes.Commit();
    WriteIniParam("t", "d", "last");
    const IniSnapshot now;
    EXPECT_EQ(
        now.Read("S", "A", "") + now.Read("S", "B", "-") + now.Read("T", "C", "-") + now.Read("T", "D", ""),
        "new--last");
    EXPECT_EQ(ReadProfileString("S", "A", "", file + "~"), "old");
    if (atTheStart) host.Expect(platform::MessageButton::Ok);
    TellFailures();
    TellFailures();
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_TRUE(host.boxes[0].text.ends_with("Fichier : " + file + "\r\nCause : " + cause))
        << host.boxes[0].text;
    EXPECT_TRUE(std::filesystem::is_directory(file) || std::filesystem::file_size(file) == size);
    fchmod(folder, 0755);
    close(folder);
    std::filesystem::remove(file);
    std::filesystem::rename(file + "~", file);
    WriteIniParam("S", "A", "newer");
    EXPECT_EQ(ScriptedHost::ReadFile(file), "[S]\r\n; \xE9\r\nA=newer\r\n[t]\r\nd=last\r\n");
    WriteIniParam("S", "A", "newest");
    ForgetSettings();
    EXPECT_EQ(ReadIniParam("S", "A", "") + ReadIniParam("T", "D", ""), "newestlast");
}

TEST(SettingsFile, WhatCannotBeWrittenLivesOnAndIsToldOnce) {
    const std::string unreadable = "fichier illisible", large = "fichier trop grand";
    CheckThatSettingsLiveOn(unreadable, true, [](const auto& file, int) {
        std::filesystem::remove(file);
        std::filesystem::create_directory(file);
    });
    CheckThatSettingsLiveOn(unreadable, false,
                            [](const auto& file, int) { ScriptedHost::WriteFile(file, "\xFF\xFE\xD8"); });
    CheckThatSettingsLiveOn(large, true, [](const auto& file, int) {
        std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
    });
    CheckThatSettingsLiveOn(large, false, [](const auto& file, int) {
        ScriptedHost::WriteFile(file, std::string(SettingsFile::limit - 3, '\n'));
    });
    CheckThatSettingsLiveOn("fichier occupé par un autre programme", true,
                            [](const auto&, int folder) { flock(folder, LOCK_EX); });
    // Nothing is protected from root.
    const auto asNobody = [] {
        if (getuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(1);
        CheckThatSettingsLiveOn("dossier protégé en écriture", true,
                                [](const auto&, int folder) { fchmod(folder, 0555); });
        CheckThatSettingsLiveOn("fichier protégé en écriture", false,
                                [](const auto& file, int) { chmod(file.c_str(), 0444); });
        _exit(HasFailure());
    };
    EXPECT_EXIT(asNobody(), testing::ExitedWithCode(0), "");
}

// Faults: an old value after another copy wrote; a file that has not changed is read again at every question.
TEST(SettingsFile, IsReadAgainWhenItHasChangedAndOnlyThen) {
    const ScriptedHost host;
    const std::string file = IniFilePath();
    SettingsFile settings(file);
    // A file that is read at every question never gets there.
    const auto settle = [&] {
        while (settings.Now() != settings.Now()) continue;
    };
    settle();
    // In place, of one size, within one tick of the clock; then with the size and times of the old file.
    for (int i = 100; i < 400; ++i) {
        ScriptedHost::WriteFile(file, "[s]\nk=" + std::to_string(i));
        ASSERT_EQ(settings.Now()->Value("s", "k"), std::to_string(i));
    }
    settle();
    ScriptedHost::WriteFile(file + "~", "[s]\nk=777");
    std::filesystem::last_write_time(file + "~", std::filesystem::last_write_time(file));
    std::filesystem::rename(file + "~", file);
    EXPECT_EQ(settings.Now()->Value("s", "k"), "777");
    settle();
    std::filesystem::rename(file, file + "~");
    EXPECT_EQ(settings.Now()->State(), platform::FileState::Missing);
    // A link that is turned from one file to another; neither of them changes.
    ScriptedHost::WriteFile(file + "2", "[s]\nk=2");
    std::filesystem::create_symlink(file + "~", file);
    settle();
    std::filesystem::create_symlink(file + "2", file + "3");
    std::filesystem::rename(file + "3", file);
    EXPECT_EQ(settings.Now()->Value("s", "k"), "2");
    ScriptedHost::WriteFile(file, std::string(SettingsFile::limit + 1, '\n'));
    settle();
    const platform::FileStamp young{1, 1, 1, 5};
    EXPECT_TRUE(!young.IsSettled(5'000'005) && young.IsSettled(100'000'005));
    const platform::FileStamp wholeSeconds{1, 1, 1, 1'000'000'000};
    EXPECT_TRUE(!wholeSeconds.IsSettled(2'900'000'000) && wholeSeconds.IsSettled(3'100'000'000));
}

// Two running copies change one file at the same time, each of them other keys.
TEST(SettingsFile, ConcurrentWritersLoseNoKey) {
    const ScriptedHost host;
    constexpr int keys = 40;
    for (const char* writer : {"A", "B"}) {
        if (fork() != 0) continue;
        for (int i = 0; i < keys; ++i) WriteIniParam("S", writer + std::to_string(i), "kept");
        _exit(0);
    }
    while (wait(nullptr) > 0) continue;
    const std::string stored = ScriptedHost::ReadFile(IniFilePath());
    EXPECT_EQ(std::count(stored.begin(), stored.end(), '='), 2 * keys) << stored;
}

}  // namespace
