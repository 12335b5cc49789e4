#include "settings/IniParamProcs.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
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

// What another copy that starts now reads.
std::string InFile(std::string_view key) {
    return std::string(ProfileContent(IniFilePath(), SettingsFile::limit).Value("s", key).value_or("none"));
}

struct Obstacle {
    std::string cause;
    std::function<void(const std::string&file)> put, remove;
};

// Faults: a value that could not be written is gone, or never gets into the file; a file is written over that
// could not be read; the user is told during the start, twice, never, or something else.
void CheckThatSettingsLiveOn(const Obstacle& obstacle, bool atTheStart) {
    const std::string before = "[S]\r\n; \xE9\r\nA=old\r\nB=old\r\n[T]\r\nC=old\r\n";
    ScriptedHost host;
    const std::string file = IniFilePath();
    ScriptedHost::WriteFile(file, before);
    EXPECT_EQ(ReadIniParam("S", "A", ""), "old");
    if (!atTheStart) TellFailures();
    obstacle.put(file);
    if (!atTheStart) host.Expect(platform::MessageButton::Ok);
    WriteIniParam("s", "a", "new");
    ProfileChanges changes;
    changes.Delete("S", "b");
    changes.DeleteSection("t");
    changes.Write("T", "D", "first");
    changes.Write("S", "E", "a\nb");
    changes.Commit();
    WriteIniParam("t", "d", "last");
    const IniSnapshot now;
    EXPECT_EQ(
        now.Read("S", "A", "") + now.Read("S", "B", "-") + now.Read("T", "C", "-") + now.Read("T", "D", ""),
        "new--last");
    EXPECT_EQ(IniSnapshot(host.PathOf("other")).Read("S", "A", "-"), "-");
    if (atTheStart) host.Expect(platform::MessageButton::Ok);
    TellFailures();
    TellFailures();
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.boxes[0].style, 48);
    EXPECT_TRUE(host.boxes[0].text.ends_with("\r\nFichier : " + file + "\r\nCause : " + obstacle.cause))
        << host.boxes[0].text;
    obstacle.remove(file);
    EXPECT_EQ(ScriptedHost::ReadFile(file), before);
    WriteIniParam("S", "A", "new");
    EXPECT_EQ(ScriptedHost::ReadFile(file), "[S]\r\n; \xE9\r\nA=new\r\n[t]\r\nd=last\r\n");
    WriteIniParam("S", "A", "newer");
    EXPECT_EQ(InFile("A"), "newer") << "nothing is left over";
}

TEST(SettingsFile, WhatCannotBeWrittenLivesOnAndIsToldOnce) {
    int folder = -1;
    rlimit before{};
    const auto rename = [](const std::string& from, const std::string& to) {
        std::filesystem::rename(from, to);
    };
    const std::vector<Obstacle> obstacles{
        {"fichier illisible",
         [&](const auto& file) {
             rename(file, file + "~");
             std::filesystem::create_directory(file);
         },
         [&](const auto& file) {
             std::filesystem::remove(file);
             rename(file + "~", file);
         }},
        {"fichier illisible",
         [&](const auto& file) {
             rename(file, file + "~");
             ScriptedHost::WriteFile(file, "\xFF\xFE\xD8");
         },
         [&](const auto& file) { rename(file + "~", file); }},
        {"fichier trop grand",
         [&](const auto& file) {
             rename(file, file + "~");
             ScriptedHost::WriteFile(file, std::string(SettingsFile::limit - 3, '\n'));
         },
         [&](const auto& file) {
             EXPECT_EQ(std::filesystem::file_size(file), SettingsFile::limit - 3);
             rename(file + "~", file);
         }},
        {"fichier trop grand",
         [&](const auto& file) { std::filesystem::resize_file(file, std::uintmax_t{1} << 40); },
         [&](const auto& file) {
             EXPECT_EQ(std::filesystem::file_size(file), std::uintmax_t{1} << 40);
             std::filesystem::resize_file(file, 36);
         }},
        {"erreur d'écriture",
         [&](const auto&) {
             signal(SIGXFSZ, SIG_IGN);
             getrlimit(RLIMIT_FSIZE, &before);
             const rlimit tiny{4, before.rlim_max};
             setrlimit(RLIMIT_FSIZE, &tiny);
         },
         [&](const auto&) { setrlimit(RLIMIT_FSIZE, &before); }},
        {"fichier occupé par un autre programme",
         [&](const std::string& file) {
             folder = open(std::filesystem::path(file).parent_path().c_str(), O_RDONLY);
             EXPECT_EQ(flock(folder, LOCK_EX), 0);
         },
         [&](const auto&) { close(folder); }},
    };
    for (bool atTheStart = false; const Obstacle& obstacle : obstacles) {
        SCOPED_TRACE(obstacle.cause);
        CheckThatSettingsLiveOn(obstacle, atTheStart);
        atTheStart = !atTheStart;
    }
}

TEST(SettingsFile, ProtectedFoldersAndFilesAreNamedAsTheCause) {
    // Nothing is protected from root.
    if (const pid_t child = fork(); child != 0) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        return;
    }
    if (getuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(1);
    const auto parent = [](const std::string& file) { return std::filesystem::path(file).parent_path(); };
    CheckThatSettingsLiveOn(
        {"dossier protégé en écriture", [&](const auto& file) { chmod(parent(file).c_str(), 0555); },
         [&](const auto& file) { chmod(parent(file).c_str(), 0755); }},
        true);
    CheckThatSettingsLiveOn(
        {"fichier protégé en écriture", [](const auto& file) { chmod(file.c_str(), 0444); },
         [](const auto& file) { chmod(file.c_str(), 0644); }},
        false);
    _exit(testing::Test::HasFailure());
}

// Faults: an old value after another copy wrote; a file that has not changed is read again at every question.
TEST(SettingsFile, IsReadAgainWhenItHasChangedAndOnlyThen) {
    const ScriptedHost host;
    const std::string file = IniFilePath();
    EXPECT_EQ(ReadIniParam("s", "k", "none"), "none");
    for (int i = 0; i < 300; ++i) {
        // In place, of one size, within one tick of the clock.
        ScriptedHost::WriteFile(file, "[s]\nk=" + std::to_string(100 + i));
        ASSERT_EQ(ReadIniParam("s", "k", ""), std::to_string(100 + i));
    }
    SettingsFile settings(file);
    const auto settle = [&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (settings.Now() != settings.Now() && std::chrono::steady_clock::now() < deadline) continue;
        return settings.Now();
    };
    auto content = settle();
    EXPECT_EQ(content, settings.Now());
    // Renamed into place with the old file's size and times of change.
    struct stat old {};
    ASSERT_EQ(stat(file.c_str(), &old), 0);
    ScriptedHost::WriteFile(file + "~", "[s]\nk=777");
    const timespec times[] = {old.st_atim, old.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, (file + "~").c_str(), times, 0), 0);
    std::filesystem::rename(file + "~", file);
    EXPECT_EQ(settings.Now()->Value("s", "k"), "777");
    settle();
    std::filesystem::remove(file);
    EXPECT_EQ(settings.Now()->Value("s", "k"), std::nullopt);
    EXPECT_EQ(settings.Now(), settings.Now());
    const FileStamp wholeSeconds{1, 1, 1, 1'000'000'000, 1'000'000'000};
    EXPECT_FALSE(wholeSeconds.IsSettled(2'900'000'000));
    EXPECT_TRUE(wholeSeconds.IsSettled(3'100'000'000));
}

// Two running copies change one file at the same time, each of them other keys.
TEST(SettingsFile, ConcurrentWritersLoseNoKey) {
    const ScriptedHost host;
    const char* given = std::getenv("NINARIX_KEYS");
    const int keys = given ? std::atoi(given) : 40;
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    for (const char* writer : {"A", "B"}) {
        if (fork() != 0) continue;
        close(start[1]);
        char none = 0;
        // Ends for both at once, when the pipe is closed.
        if (read(start[0], &none, 1) != 0) _exit(1);
        for (int i = 0; i < keys; ++i) WriteIniParam("S", writer + std::to_string(i), "kept");
        _exit(0);
    }
    close(start[0]);
    close(start[1]);
    while (wait(nullptr) > 0) continue;
    const IniSnapshot settings;
    for (int i = 0; i < 2 * keys; ++i) {
        EXPECT_EQ(settings.Read("S", (i < keys ? "A" : "B") + std::to_string(i % keys), "lost"), "kept") << i;
    }
}

}  // namespace
