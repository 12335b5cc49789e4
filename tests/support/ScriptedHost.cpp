// SPDX-License-Identifier: MIT
#include "support/ScriptedHost.h"

#include <fstream>
#include <iterator>
#include <unistd.h>

ScriptedHost::ScriptedHost() : scope_({this, this, this, this, this, this, this, this, this}) {
    std::string pattern = (std::filesystem::temp_directory_path() / "ninarix-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    folder = pattern;
}

ScriptedHost::~ScriptedHost() {
    EXPECT_TRUE(answers.empty()) << answers.size() << " expected message boxes were not shown";
    EXPECT_TRUE(fileAnswers.empty()) << fileAnswers.size() << " expected file questions were not asked";
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string ScriptedHost::ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ScriptedHost::WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.flush().good()) << path;
}

platform::MessageButton ScriptedHost::Show(std::string_view text, int style, int helpContext) {
    boxes.push_back({std::string(text), style, helpContext});
    if (onShow) onShow();
    if (!answers.empty()) {
        const auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
    if (always == platform::MessageButton{}) ADD_FAILURE() << "unexpected message box: " << text;
    if (always != platform::MessageButton{}) return always;
    // The answers that change least, so that a failing test ends.
    if ((style & 7) == platform::MessageStyle::YesNo) return platform::MessageButton::No;
    return (style & 7) == 0 ? platform::MessageButton::Ok : platform::MessageButton::Cancel;
}

void ScriptedHost::Yield() {
    ++yields;
    if (onYield) onYield();
}

std::chrono::nanoseconds ScriptedHost::Now() const {
    elapsed_ += stepPerReading;
    return now + elapsed_;
}

std::string ScriptedHost::Ask(const platform::FileQuestion& question) {
    questions.push_back(question);
    if (onShow) onShow();
    if (fileAnswers.empty()) {
        ADD_FAILURE() << "unexpected file question";
        return {};
    }
    auto answer = fileAnswers.front();
    fileAnswers.pop_front();
    return answer;
}

std::optional<std::uint32_t> ScriptedHost::Choose(std::uint32_t initial, CustomColours& custom,
                                                  int /*helpContext*/) {
    if (onChooseColour) return onChooseColour(initial, custom);
    ADD_FAILURE() << "unexpected question for a colour";
    return std::nullopt;
}

void ScriptedHost::ShowTopic(const std::string& helpFile, int helpContext) {
    helpCalls.push_back("topic " + helpFile + " " + std::to_string(helpContext));
}
