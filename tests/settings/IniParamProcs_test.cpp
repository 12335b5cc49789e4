#include "settings/IniParamProcs.h"

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
    // Writing one key over settings that could not be read would lose all others.
    std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
    WriteIniParam("Options", "A", "1");
    EXPECT_EQ(ReadIniParam("Options", "A", "default"), "default");
    EXPECT_EQ(std::filesystem::file_size(file), std::uintmax_t{1} << 40);
}

// Two running copies change one file at the same time, each of them other keys.
TEST(SettingsFile, ConcurrentWritersLoseNoKey) {
    const ScriptedHost host;
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    for (const char* writer : {"A", "B"}) {
        if (fork() != 0) continue;
        close(start[1]);
        char none = 0;
        // Ends for both at once, when the pipe is closed.
        if (read(start[0], &none, 1) != 0) _exit(1);
        for (int i = 0; i < 40; ++i) WriteIniParam("S", writer + std::to_string(i), "kept");
        _exit(0);
    }
    close(start[0]);
    close(start[1]);
    while (wait(nullptr) > 0) continue;
    const IniSnapshot settings;
    for (int i = 0; i < 80; ++i) {
        EXPECT_EQ(settings.Read("S", (i < 40 ? "A" : "B") + std::to_string(i % 40), "lost"), "kept") << i;
    }
}

}  // namespace
