#include "platform/ProfileFile.h"

#include <gtest/gtest.h>
#include <string>

using namespace std::string_literals;

namespace {

platform::ProfileFile Parsed(const std::string& bytes) {
    platform::ProfileFile profile;
    profile.Parse(bytes);
    return profile;
}

// The value of key "k" in section "s"; "-" when there is none.
std::string ValueOfK(const std::string& bytes) {
    return Parsed(bytes).Value("s", "k").value_or("-");
}

std::string AfterSet(const std::string& bytes, const std::string& key, const std::string& value) {
    auto profile = Parsed(bytes);
    EXPECT_TRUE(profile.Set("s", key, value));
    EXPECT_EQ(profile.Value("s", key), value);
    return profile.Bytes();
}

}  // namespace

TEST(ProfileFileSyntax, ReadsWhatOtherProgramsWrite) {
    const struct {
        std::string bytes;
        std::string value;
    } cases[] = {
        {"[s]\r\nk=v\r\n", "v"},
        {"[s]\nk=v", "v"},
        {" [ s ] ; why\r\n\t k \t= \t v w \t\r\n", "v w"},
        {"[s]\r\nk=\r\n", ""},
        {"[S]\nK=a=b;c\r\n", "a=b;c"},
        {"\xEF\xBB\xBF[s]\r\nk=v\r\n", "v"},
        {"[s]\r\n\xEF\xBB\xBFk=v\r\n", "-"},
        {"[s]\r\nk = \" v \" \r\n", " v "},
        {"[s]\r\nk='v'\r\n", "v"},
        {"[s]\r\nk='v\"\r\n", "'v\""},
        {"[s]\r\nk=\"\r\n", "\""},
        {"[s]\r\n;k=1\r\n ; k=2\r\nk=v\r\n", "v"},
        {"[s]\r\nk\r\n[k\r\n=1\r\nkk=2\r\nk=v\r\n", "v"},
        {"[s]\r\nk=1\0"
         "2\r\n"s,
         "1\0"
         "2"s},
        {"\0[s]\r\n[s]\0\r\n\0k=1\r\nk=v\r\n"s, "v"},
        {"[s]\r\nk=\xFF\xC3\r\n", "\xFF\xC3"},
        {"k=1\r\n[]\r\nk=2\r\n;[s]\r\nk=3\r\n", "-"},
        {"[s]", "-"},
    };
    for (const auto& [bytes, value] : cases)
        EXPECT_EQ(ValueOfK(bytes), value) << testing::PrintToString(bytes);
}

TEST(ProfileFileSyntax, FirstSectionAndFirstKeyWin) {
    const std::string bytes = "[s]\r\nk=1\r\nK=2\r\n[t]\r\n[S]\r\nk=3\r\nj=4\r\n";
    EXPECT_EQ(ValueOfK(bytes), "1");
    EXPECT_EQ(Parsed(bytes).Value("s", "j"), std::nullopt);
    EXPECT_EQ(AfterSet(bytes, "k", "9"), "[s]\r\nk=9\r\nK=2\r\n[t]\r\n[S]\r\nk=3\r\nj=4\r\n");
    EXPECT_EQ(Parsed(bytes).Values("s", {"j", "k"}), (std::vector<std::optional<std::string>>{{}, "1"}));
}

TEST(ProfileFileSyntax, EmptySectionNameIsNotTheKeysBeforeAnyHeader) {
    auto profile = Parsed("1=before\r\n[x]\r\n1=x\r\n");
    EXPECT_EQ(profile.Value("", "1"), std::nullopt);
    EXPECT_TRUE(profile.Set("", "1", "inside"));
    EXPECT_EQ(profile.Bytes(), "1=before\r\n[x]\r\n1=x\r\n[]\r\n1=inside\r\n");
    EXPECT_EQ(profile.Value("", "1"), "inside");
    EXPECT_EQ(Parsed("1=0\n[ ]\n1=2").Value("", "1"), "2");
}

// One pass over many keys must not answer otherwise than one question after the other.
TEST(ProfileFileSyntax, ManyKeysReadLikeOneByOne) {
    const auto profile = Parsed("1=0\r\n[]\r\n 2 = b\r\n10=x\r\nA=c\r\n2=late\r\n[x]\r\n1=e\r\n");
    const std::vector<std::string> keys{"10", "1", "2", " a ", "a", "2", "zz"};
    const auto values = profile.Values("", keys);
    ASSERT_EQ(values.size(), keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(values[i], profile.Value("", keys[i])) << keys[i];
    EXPECT_EQ(values[2], "b");
    EXPECT_EQ(Parsed("[x]").Values("", keys), decltype(values)(keys.size())) << "no such section";
}

TEST(ProfileFileChanges, UntouchedLinesKeepEveryByte) {
    const std::string head = "\xEF\xBB\xBF; \xFF\xFE \n\r\n[ s ]\t;c\nj='1'  \n \tK\t=";
    const std::string tail = "\r\n;k=2\r\n\xC3(\0=\x80\n[t] \r\r\n k=3"s;
    EXPECT_EQ(AfterSet(head + " old=x " + tail, "k", "new"), head + "new" + tail);

    auto profile = Parsed(head + "old" + tail);
    profile.RemoveKey("s", "k");
    EXPECT_EQ(profile.Bytes(), head.substr(0, head.rfind(" \tK")) + tail.substr(2));
}

TEST(ProfileFileChanges, NewKeysGoBehindTheirSectionsLastLine) {
    const struct {
        std::string before;
        std::string after;
    } cases[] = {
        {"", "[s]\r\nk=v\r\n"},
        {"\xEF\xBB\xBF", "\xEF\xBB\xBF[s]\r\nk=v\r\n"},
        {"[x]\nj=1", "[x]\nj=1\r\n[s]\r\nk=v\r\n"},
        {"[s]", "[s]\r\nk=v\r\n"},
        {"[s]\nj=1", "[s]\nj=1\r\nk=v\r\n"},
        {"[s]\r\nj=1\r", "[s]\r\nj=1\r\nk=v\r\n"},
        {"[x]\r\nj=1\r", "[x]\r\nj=1\r\n[s]\r\nk=v\r\n"},
        {"[s]\r\n\r\n \t\r\n[x]\r\n", "[s]\r\nk=v\r\n\r\n \t\r\n[x]\r\n"},
        {"[s]\r\nj=1\r\n; about x\r\n\r\n[x]\r\nk=1\r\n",
         "[s]\r\nj=1\r\n; about x\r\nk=v\r\n\r\n[x]\r\nk=1\r\n"},
    };
    for (const auto& [before, after] : cases) EXPECT_EQ(AfterSet(before, "k", "v"), after) << before;
}

TEST(ProfileFileChanges, RefusesWhatCouldNotBeFoundAgain) {
    const std::string bytes = "[s]\r\nk=v\r\n";
    const struct {
        std::string section, key, value;
    } refused[] = {
        {"s", "k", "a\nb"}, {"s", "k", "a\r"},    {"s", "k", "a\0b"s}, {"s", "a\nb", "v"}, {"s", "", "v"},
        {"s", "a=b", "v"},  {"s", ";k", "v"},     {"s", "[k", "v"},    {"s", " k", "v"},   {"s", "k\t", "v"},
        {"a]b", "k", "v"},  {"s\r\nx", "k", "v"}, {" s", "k", "v"},    {"s ", "k", "v"},   {"s\0"s, "k", "v"},
    };
    for (const auto& [section, key, value] : refused) {
        auto profile = Parsed(bytes);
        EXPECT_FALSE(profile.Set(section, key, value))
            << testing::PrintToString(section + "|" + key + "|" + value);
        EXPECT_EQ(profile.Bytes(), bytes);
    }
}

TEST(ProfileFileChanges, RemovedSectionTakesItsLinesAndNoOthers) {
    auto profile = Parsed("\xEF\xBB\xBF[MRU]\r\n1=a\r\n;x\r\n\r\n[Options]\r\n1=b\r\n[MRUs]\r\n1=c");
    profile.RemoveSection("mru");
    EXPECT_EQ(profile.Bytes(), "\xEF\xBB\xBF[Options]\r\n1=b\r\n[MRUs]\r\n1=c");
    profile.RemoveSection("MRUs");
    EXPECT_EQ(profile.Bytes(), "\xEF\xBB\xBF[Options]\r\n1=b\r\n");
    EXPECT_TRUE(profile.Set("MRU", "1", "d"));
    EXPECT_EQ(profile.Value("MRU", "1"), "d");
}
