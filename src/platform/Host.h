// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What the program asks of the machine it runs on, as small interfaces. All texts are UTF-8.
// The widget layer implements them once; tests implement them with scripted answers.
namespace platform {

class Registry;

enum class MessageButton { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

// A box's style is the sum of one icon, at most one button set and at most one default button.
namespace MessageStyle {
inline constexpr int OkCancel = 1;
inline constexpr int YesNoCancel = 3;
inline constexpr int YesNo = 4;
inline constexpr int Stop = 16;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int SecondDefault = 256;
inline constexpr int ThirdDefault = 512;
}  // namespace MessageStyle

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    // Modal, titled with the application's title. `text` is shown as it stands, CR and CR LF as line
    // breaks. A help context other than 0 lets F1 open that topic. Escape answers Cancel, or No.
    virtual MessageButton Show(std::string_view text, int style, int helpContext = 0) = 0;
    virtual void Beep() = 0;
};

enum class PointerShape { Default = 0, Hourglass = 11, ArrowAndHourglass = 13 };

class Pointer {
  public:
    virtual ~Pointer() = default;
    // The shape replaces the one set before; Default ends every waiting pointer.
    virtual void Shape(PointerShape shape) = 0;
};

class EventPump {
  public:
    virtual ~EventPump() = default;
    // Lets waiting window events run. Cheap enough for a call per microsecond: an
    // implementation may skip a call when it served the events a few milliseconds ago.
    virtual void Yield() = 0;
};

class Clock {
  public:
    virtual ~Clock() = default;
    // Monotonic time since an arbitrary start.
    virtual std::chrono::nanoseconds Now() const = 0;
};

class SeedSource {
  public:
    virtual ~SeedSource() = default;
    // A seed that differs from call to call, even when the calls are microseconds apart.
    virtual std::uint64_t NextSeed() = 0;
};

struct FileQuestion {
    bool save = false;
    std::string filter;        // "Description|pattern|Description|pattern"
    std::string folder;        // where the dialog starts; empty: the host's own choice
    std::string proposedName;  // without a folder; may be empty
    int helpContext = 0;       // of the topic that F1 opens
};

class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    // The chosen path, or empty text when the user cancelled. When saving, a name without an extension
    // gets the first pattern's, and an existing file is only returned after the user agreed.
    virtual std::string Ask(const FileQuestion& question) = 0;
};

class ColourDialogs {
  public:
    using CustomColours = std::array<std::uint32_t, 16>;

    virtual ~ColourDialogs() = default;
    // The chosen colour, or nothing when the user cancelled. Colours have red in the low byte. `custom` is
    // offered beside the others; after a choice it holds what the user made of it.
    virtual std::optional<std::uint32_t> Choose(std::uint32_t initial, CustomColours& custom,
                                                int helpContext) = 0;
};

class HelpViewer {
  public:
    virtual ~HelpViewer() = default;
    virtual void ShowContents(const std::string& helpFile) = 0;
    virtual void ShowTopic(const std::string& helpFile, int helpContext) = 0;
};

class Application {
  public:
    virtual ~Application() = default;
    virtual const std::string& ProgramFolder() const = 0;    // without a separator at its end
    virtual const std::string& ProgramFileName() const = 0;  // without folder and extension
    virtual std::string Title() const = 0;
    virtual int MajorVersion() const = 0;
    virtual int MinorVersion() const = 0;
    virtual std::string CommandLine() const = 0;  // all that follows the program's name, as one text
    // Where the user's state is kept that is no setting; may not be there yet. Empty: there is no place.
    virtual std::string StateFolder() const = 0;
    virtual std::string HelpFile() const = 0;
    virtual void HelpFile(const std::string& path) = 0;
};

// Borrowed pointers; each must outlive the HostScope that installs it.
struct Host {
    MessageBoxes* messages = nullptr;
    Pointer* pointer = nullptr;
    EventPump* events = nullptr;
    Clock* clock = nullptr;
    SeedSource* seeds = nullptr;
    FileDialogs* files = nullptr;
    HelpViewer* help = nullptr;
    Application* application = nullptr;
    ColourDialogs* colours = nullptr;
    Registry* registry = nullptr;  // may be missing: nothing is associated then
};

// The installed host. One must be installed (asserted).
const Host& TheHost();

// Installs a host for its own lifetime, then puts the previous one back.
class HostScope {
  public:
    explicit HostScope(const Host& host);
    ~HostScope();
    HostScope(const HostScope&) = delete;
    HostScope& operator=(const HostScope&) = delete;

  private:
    Host previous_;
};

}  // namespace platform
