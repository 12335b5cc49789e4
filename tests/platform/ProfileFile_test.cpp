// SPDX-License-Identifier: MIT
#include "platform/ProfileFile.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

platform::ProfileFile Parsed(const std::string& bytes) {
    platform::ProfileFile profile;
    profile.Parse(bytes);
    return profile;
}

std::string Utf16(const std::u16string& text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : u"\uFEFF" + text) {
        for (const bool high : {bigEndian, !bigEndian}) bytes += static_cast<char>(high ? unit >> 8 : unit);
    }
    return bytes;
}

// The value of key "k" in section "s", asked alone and among others; "-" when there is none.
std::string ValueOfK(const std::string& bytes) {
    const auto profile = Parsed(bytes);
    const auto value = profile.Value(" S\t", " k ");
    EXPECT_EQ(platform::ProfileIndex(profile).Value("s ", "\tK"), value);
    EXPECT_EQ(profile.Values("s ", {"K ", "none", "k"}),
              (std::vector<std::optional<std::string>>{value, {}, value}));
    return value.value_or("-");
}

// The file after a value of section "s" was set, which also reads back.
std::string AfterSet(const std::string& bytes, const std::string& key, const std::string& value) {
    auto profile = Parsed(bytes);
    EXPECT_TRUE(profile.Set("s", key, value));
    EXPECT_EQ(profile.Value("s", key), value);
    return profile.Bytes();
}

}  // namespace

TEST(ProfileFile, ReadsWhatOtherProgramsWrite) {
    const std::pair<std::string, std::string> cases[] = {
        {"[s]\r\nk=v\r\n", "v"},
        {"[s]\nk=v", "v"},
        {" [ s ] ; why\r\n\t k \t= \t v w \t\r\n", "v w"},
        {"[s]\r\nk=\r\n", ""},
        {"[S]\nK=a=b;c\r\n", "a=b;c"},
        {"\xEF\xBB\xBF[s]\r\nk=v\r\n", "v"},
        {"[s]\r\n\xEF\xBB\xBFk=v\r\n", "-"},
        {"[s]\r\nk = \" v \" \r\n", " v "},
        {"[s]\r\nk=''\r\n", ""},
        {"[s]\r\nk='v\"\r\n", "'v\""},
        {"[s]\r\nk=\"\r\n", "\""},
        {"[s] \r\r\n k=v \r\r\n", "v"},
        {"[s]\nk='v'\r\r", "v"},
        {Utf16(u"[s]\r\nk=é€😀\r\n", false), "é€😀"},
        {Utf16(u"[s]\nk=\"v\"\r\r\n", true), "v"},
        {"[s]\r\n;k=1\r\n ; k=2\r\nk=v\r\n", "v"},
        {"[s]\r\nk\r\n[k\r\n=1\r\nkk=2\r\n\n\r\nk=v\r\n", "v"},
        {"[s]\r\nk=1\0\x32\r\n"s, "1\0\x32"s},
        {"\0[s]\r\n[s]\0\r\n\0k=1\r\nk=v\r\n"s, "v"},
        {"[s]\r\nk=\xFF\xC3\r\n", "\xFF\xC3"},
        {"k=1\r\n[]\r\nk=2\r\n;[s]\r\nk=3\r\n", "-"},
        {"[s]\r\nj=1\r\n[t]\r\n[S]\r\nk=3\r\n", "-"},
        {"[s]\r\nk=1\r\nK=2\r\n", "1"},
        {"[s]", "-"}};
    for (const auto& [bytes, value] : cases)
        EXPECT_EQ(ValueOfK(bytes), value) << testing::PrintToString(bytes);
    EXPECT_EQ(Parsed("1=0\n[ ]\n1=2").Value("", "1"), "2") << "not the keys before any header";
    EXPECT_EQ(Parsed("1=0\n").Value("", "1"), std::nullopt);
}

TEST(ProfileFile, UntouchedLinesKeepEveryByte) {
    const std::string head = "\xEF\xBB\xBF; \xFF\xFE \n\r\n[ s ]\t;c\nj='1'  \n \tK\t=";
    const std::string tail = "\r\n;k=2\r\nk=4\n\xC3(\0=\x80\n[t] \r\r\n k=3\n[S]\nk=5"s;
    EXPECT_EQ(AfterSet(head + " old=x " + tail, "k", "new"), head + "new" + tail);
    EXPECT_EQ(AfterSet("[s]\r\r\nk=old\r\r\nj=1\r\r\n", "k", "new"), "[s]\r\r\nk=new\r\r\nj=1\r\r\n");

    auto profile = Parsed(head + "old" + tail);
    profile.RemoveKey(" S", "k ");
    EXPECT_EQ(profile.Bytes(), head.substr(0, head.rfind(" \tK")) + tail.substr(2));
    const std::string before = profile.Bytes();
    profile.RemoveKey("s", "none");
    profile.RemoveKey("none", "k");
    profile.RemoveSection("none");
    EXPECT_EQ(profile.Bytes(), before);

    profile = Parsed("\xEF\xBB\xBF[MRU]\r\n1=a\r\n;x\r\n\r\n[Options]\r\n1=b\r\n[MRUs]\r\n1=c");
    profile.RemoveSection(" mru ");
    EXPECT_EQ(profile.Bytes(), "\xEF\xBB\xBF[Options]\r\n1=b\r\n[MRUs]\r\n1=c");
    profile.RemoveSection("MRUs");
    EXPECT_EQ(profile.Bytes(), "\xEF\xBB\xBF[Options]\r\n1=b\r\n");
}

TEST(ProfileFile, NewKeysGoBehindTheirSectionsLastLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "[s]\r\nk=v\r\n"},
        {"\xEF\xBB\xBF", "\xEF\xBB\xBF[s]\r\nk=v\r\n"},
        {"k=0\n[x]\nj=1", "k=0\n[x]\nj=1\r\n[s]\r\nk=v\r\n"},
        {"[s]", "[s]\r\nk=v\r\n"},
        {"[s]\r\nj=1\r", "[s]\r\nj=1\r\nk=v\r\n"},
        {"[x]\r\nj=1\r", "[x]\r\nj=1\r\n[s]\r\nk=v\r\n"},
        {"[s]\r\nj=1\n; about x\r\n \t\r\n[x]\r\nk=1", "[s]\r\nj=1\n; about x\r\nk=v\r\n \t\r\n[x]\r\nk=1"},
    };
    for (const auto& [before, after] : cases) EXPECT_EQ(AfterSet(before, "k", "v"), after) << before;
}

TEST(ProfileFile, RefusesWhatCouldNotBeFoundAgain) {
    const std::string names[] = {"a\nb", "\ra", "a\0b"s, " a", "a\t"};
    std::vector<std::array<std::string, 3>> refused{
        {"s", "", "v"}, {"s", "a=b", "v"}, {"s", ";k", "v"}, {"s", "[k", "v"}, {"a]b", "k", "v"}};
    for (const auto& name : names) refused.insert(refused.end(), {{"s", name, "v"}, {name, "k", "v"}});
    for (const auto* value : {"a\nb", "a\r"}) refused.push_back({"s", "k", value});
    for (const auto& [section, key, value] : refused) {
        auto profile = Parsed("[s]\r\nk=v\r\n");
        EXPECT_FALSE(profile.Set(section, key, value)) << section << '|' << key << '|' << value;
        EXPECT_EQ(profile.Bytes(), "[s]\r\nk=v\r\n");
    }
}

TEST(ProfileFile, Utf16StaysUtf16AndWhatIsBrokenIsNotWrittenOver) {
    for (const bool big : {false, true}) {
        const std::u16string head = u"\uFFFD;\U0010FFFF😀\uE000\r\r\n[s]\nj=\u07FF\u0800";
        EXPECT_EQ(AfterSet(Utf16(head, big), "k", "é😀"), Utf16(head + u"\r\nk=é😀\r\n", big));
        // No text of UTF-8, and still what was set is read back.
        for (const auto* bytes :
             {"\xE9t\xC3\xA9", "\xC0\x80\xED\xA0\x80\xF4\x90\x80\x80\xF0\x9F\xC3", "\xF9\xAA\xAA\xAA"}) {
            EXPECT_EQ(ValueOfK(AfterSet(Utf16(u"", big), "k", bytes)), bytes);
        }
        const std::u16string intact = u"[s]\r\nk=v\r\n;";
        EXPECT_TRUE(Parsed(Utf16(intact, big)).IsWritable());
        EXPECT_FALSE(Parsed(Utf16(intact, big) + "x").IsWritable());
        for (const auto* end : {u"\xD801", u"\xDC01", u"\xDCC3\xDCA9"}) {
            EXPECT_FALSE(Parsed(Utf16(intact + end, big)).IsWritable());
        }
    }
}
