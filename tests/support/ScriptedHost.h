// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/Host.h"

// A host whose answers are queued and whose calls are recorded. An unexpected message box, an unanswered
// file question or an answer that nobody asked for fails the test. Settings live in a folder of its own,
// removed at the end.
class ScriptedHost : public platform::MessageBoxes,
                     public platform::Pointer,
                     public platform::EventPump,
                     public platform::Clock,
                     public platform::SeedSource,
                     public platform::FileDialogs,
                     public platform::HelpViewer,
                     public platform::Application,
                     public platform::ColourDialogs {
  public:
    struct Box {
        std::string text;
        int style = 0;
        int helpContext = 0;
    };

    ScriptedHost();
    ~ScriptedHost() override;
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;

    // ---- What to answer.
    void Expect(platform::MessageButton answer) { answers.push_back(answer); }
    void ExpectFile(const std::string& path) { fileAnswers.push_back(path); }
    // Answers every box beyond the queue alike; for loops of unknown length.
    void AnswerAlways(platform::MessageButton answer) { always = answer; }

    std::deque<platform::MessageButton> answers;
    std::deque<std::string> fileAnswers;
    // Answers a question for a colour; may change the custom colours. Without it the question fails the test.
    std::function<std::optional<std::uint32_t>(std::uint32_t, CustomColours&)> onChooseColour;
    platform::MessageButton always{};
    std::function<void()> onYield;
    std::function<void()> onShow;  // while a message box or a file question is open
    std::chrono::nanoseconds now{0};
    std::chrono::nanoseconds stepPerReading{0};  // added to `now` at every reading of the clock
    std::uint64_t seed = 1;                      // the last seed given; the next one is larger by 1
    std::filesystem::path folder;                // the program's own folder
    std::string commandLine;

    // ---- What was asked.
    std::vector<Box> boxes;
    std::vector<platform::FileQuestion> questions;
    std::vector<platform::PointerShape> shapes;
    std::vector<std::string> helpCalls;  // "contents file" or "topic file context"
    int beeps = 0;
    int yields = 0;

    // ---- Helpers.
    std::string PathOf(const std::string& name) const { return (folder / name).string(); }
    static std::string ReadFile(const std::string& path);
    static void WriteFile(const std::string& path, std::string_view bytes);

    // ---- The interfaces.
    platform::MessageButton Show(std::string_view text, int style, int helpContext) override;
    void Beep() override { ++beeps; }
    void Shape(platform::PointerShape shape) override { shapes.push_back(shape); }
    void Yield() override;
    std::chrono::nanoseconds Now() const override;
    std::uint64_t NextSeed() override { return ++seed; }
    std::string Ask(const platform::FileQuestion& question) override;
    std::optional<std::uint32_t> Choose(std::uint32_t initial, CustomColours& custom,
                                        int helpContext) override;
    void ShowContents(const std::string& helpFile) override { helpCalls.push_back("contents " + helpFile); }
    void ShowTopic(const std::string& helpFile, int helpContext) override;
    const std::string& ProgramFolder() const override { return folder.native(); }
    const std::string& ProgramFileName() const override { return name_; }
    std::string Title() const override { return "Ninarix"; }
    int MajorVersion() const override { return 12; }
    int MinorVersion() const override { return 34; }
    std::string CommandLine() const override { return commandLine; }
    std::string StateFolder() const override { return PathOf("state"); }
    std::string HelpFile() const override { return helpFile_; }
    void HelpFile(const std::string& path) override { helpFile_ = path; }

  private:
    std::string helpFile_, name_ = "Ninarix";
    mutable std::chrono::nanoseconds elapsed_{0};
    platform::HostScope scope_;
};
