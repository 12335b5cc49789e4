#include "settings/IniParamProcs.h"

#include <sys/wait.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

using namespace IniParamProcs;

namespace {

// "é" is two bytes, "€" three and the last one four.
const std::string manyBytes[] = {"x", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};

std::string Repeated(std::size_t count, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

}  // namespace

TEST(Settings, ValuesAreCutAt1023BytesButNeverInsideACharacter) {
    for (const std::string& character : manyBytes) {
        for (std::size_t before = 1020; before <= 1024; ++before) {
            const std::string text = std::string(before, 'a') + Repeated(4, character);
            const std::string cut = AsProfileString(text);
            ASSERT_LE(cut.size(), 1023u);
            EXPECT_GT(cut.size() + character.size(), 1023u) << "more was cut than had to be";
            EXPECT_EQ(cut, text.substr(0, cut.size()));
            EXPECT_TRUE(cut.size() <= before || (cut.size() - before) % character.size() == 0) << before;
        }
    }
    EXPECT_EQ(AsProfileString(std::string(2000, '\x80')).size(), 1023u);
    EXPECT_EQ(AsProfileString(std::string(1023, ' ') + "x"), "") << "blanks are trimmed behind the cut";
}

TEST(Settings, ReadsTrimmedUpToTheFirstNulAndTreatsTheDefaultAlike) {
    ScriptedHost host;
    host.WriteFile(IniFilePath(), std::string("[Options]\r\nA=  12  \r\nB=\r\nC=' c '\r\nD=1 \0"
                                              "2\r\nE=\t5\t\r\n",
                                              48));
    const struct {
        std::string key, byDefault, value;
    } cases[] = {
        {"A", "x", "12"}, {"B", "x", ""},  {"C", "x", "c"},
        {"D", "x", "1"},  {"E", "x", "5"}, {"F", " x ", "x"},
    };
    for (const auto& [key, byDefault, value] : cases)
        EXPECT_EQ(ReadIniParam("options", key, byDefault), value) << key;
}

TEST(Settings, BothSpellingsReachOneSectionOfTheProgramsOwnFile) {
    ScriptedHost host;
    WriteIniParam("options", "NoAutoMasks", "1");
    WriteIniParam("Options", "noautomasks", "0");
    EXPECT_EQ(host.ReadFile(host.PathOf("Ninarix.ini")), "[options]\r\nNoAutoMasks=0\r\n");
    EXPECT_EQ(ReadIniParam("OPTIONS", "NoAutoMasks", ""), "0");
    DeleteIniParam("Options", "NOAUTOMASKS");
    EXPECT_EQ(ReadIniParam("Options", "NoAutoMasks", "none"), "none");
}

// Writing one key over settings that could not be read would lose all others.
TEST(Settings, UnreadableSettingsReadAsDefaultsAndAreNeverReplaced) {
    ScriptedHost host;
    std::filesystem::create_directory(IniFilePath());
    WriteIniParam("Options", "A", "1");
    DeleteIniSection("Options");
    EXPECT_EQ(ReadIniParam("Options", "A", "default"), "default");
    EXPECT_TRUE(std::filesystem::is_empty(IniFilePath()));

    std::filesystem::remove(IniFilePath());
    host.WriteFile(IniFilePath(), "");
    const auto tooLarge = std::uintmax_t{1} << 40;
    std::filesystem::resize_file(IniFilePath(), tooLarge);
    WriteIniParam("Options", "A", "1");
    EXPECT_EQ(std::filesystem::file_size(IniFilePath()), tooLarge);
}

// Two running copies change one file at the same time, each of them other keys.
TEST(Settings, ConcurrentWritersLoseNoKey) {
    ScriptedHost host;
    constexpr int writers = 2;
    constexpr int keys = 40;
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    pid_t children[writers];
    for (int writer = 0; writer < writers; ++writer) {
        children[writer] = fork();
        if (children[writer] != 0) continue;
        close(start[1]);
        char none = 0;
        if (read(start[0], &none, 1) != 0) _exit(1);  // ends for all at once, when the pipe is closed
        for (int i = 0; i < keys; ++i)
            WriteIniParam("S", std::to_string(writer * keys + i), std::to_string(i));
        _exit(0);
    }
    close(start[0]);
    close(start[1]);
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const IniSnapshot settings;
    for (int i = 0; i < writers * keys; ++i) {
        EXPECT_EQ(settings.Read("S", std::to_string(i), "lost"), std::to_string(i % keys)) << "key " << i;
    }
}
