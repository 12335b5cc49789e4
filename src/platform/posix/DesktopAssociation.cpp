// SPDX-License-Identifier: MIT
#include "platform/DesktopAssociation.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/AsciiText.h"
#include "platform/FileRights.h"
#include "platform/SafeFile.h"
#include "platform/UserFolders.h"

namespace fs = std::filesystem;

namespace platform {

namespace {

// In a data folder.
constexpr const char* mimeFile = "/mime/packages/ninarix.xml";
constexpr const char* entryFile = "/applications/ninarix.desktop";
constexpr const char* launcherFile = "/ninarix/demarrer";
constexpr const char* themeFolder = "/icons/hicolor";
constexpr const char* drawingFile = "/scalable/apps/ninarix.svg";

std::string_view CutField(std::string_view& line) {
    const std::string_view field = line.substr(0, line.find(':'));
    line.remove_prefix(std::min(line.size(), field.size() + 1));
    return field;
}

// Looks through one list of file name patterns, lines of weight:type:pattern:flags, for the heaviest type.
void FindOwner(std::string_view globs, const std::string& pattern, int& heaviest, std::string& owner) {
    while (!globs.empty()) {
        std::string_view line = globs.substr(0, globs.find('\n'));
        globs.remove_prefix(std::min(globs.size(), line.size() + 1));
        const std::string_view weightText = CutField(line);
        const std::string_view type = CutField(line);
        int weight = 0;
        const auto number = std::from_chars(weightText.data(), weightText.data() + weightText.size(), weight);
        if (number.ec != std::errc() || weight <= heaviest) continue;  // the former: a comment
        if (!SameName(CutField(line), pattern) || type == DesktopAssociation::MimeType) continue;
        heaviest = weight;
        owner = type;
    }
}

// Renamed into place, so that no desktop reads half a file. It is not forced to disk, which costs some ten
// milliseconds for each of a dozen files that the program can publish again.
bool WritePublished(const fs::path& file, std::string_view bytes) {
    std::error_code failed;
    fs::create_directories(file.parent_path(), failed);
    const fs::path temporary = file.string() + ".ninarix-new";
    std::ofstream stream(temporary, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (stream) fs::rename(temporary, file, failed);
    if (stream && !failed) return true;
    fs::remove(temporary, failed);
    return false;
}

std::string AsXml(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        switch (c) {
            case '&':
                xml += "&amp;";
                break;
            case '<':
                xml += "&lt;";
                break;
            case '>':
                xml += "&gt;";
                break;
            case '"':
                xml += "&quot;";
                break;
            // No other control character may stand in an XML file, however it is written.
            default:
                if (static_cast<unsigned char>(c) >= ' ') xml += c;
        }
    }
    return xml;
}

std::string MimePackage(const FileAssociation& association) {
    const std::string type(DesktopAssociation::MimeType);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
           "  <mime-type type=\"" +
           type +
           "\">\n"
           "    <comment>" +
           AsXml(association.description) +
           "</comment>\n"
           "    <comment xml:lang=\"fr\">" +
           AsXml(association.description) +
           "</comment>\n"
           "    <sub-class-of type=\"text/plain\"/>\n"
           "    <icon name=\"ninarix\"/>\n"
           "    <glob pattern=\"*." +
           AsXml(association.extension) +
           "\"/>\n"
           "  </mime-type>\n"
           "</mime-info>\n";
}

// A value of a desktop entry: a line break would start a line of its own.
std::string AsEntryText(std::string_view text) {
    std::string value;
    for (const char c : text) {
        switch (c) {
            case '\\':
                value += "\\\\";
                break;
            case '\n':
                value += "\\n";
                break;
            case '\r':
                value += "\\r";
                break;
            case '\t':
                value += "\\t";
                break;
            default:
                value += c;
        }
    }
    return value;
}

bool NeedsQuotes(std::string_view path) {
    return std::any_of(path.begin(), path.end(), [](char c) {
        return !IsLetterOrDigit(c) && (static_cast<unsigned char>(c) & 0x80U) == 0 &&
               std::string_view("/._-+,:@").find(c) == std::string_view::npos;
    });
}

std::string QuotedForEntry(std::string_view path) {
    std::string quoted = "\"";
    for (const char c : path) {
        if (c == '%') quoted += '%';
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) quoted += '\\';
        quoted += c;
    }
    return AsEntryText(quoted + '"');
}

// A script that starts the program, whatever characters its path has. A user's entry hides the system's, so
// that one that outlives its program would hide a package's: it gives way to that, or goes.
std::string Launcher(std::string_view program) {
    std::string script = "#!/bin/sh\nprogram='";
    for (const char c : program) script += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return script + R"('
if [ -x "$program" ]; then exec "$program" "$@"; fi
if command -v ninarix >/dev/null; then exec ninarix "$@"; fi
cd "$(dirname "$0")/.." || exit 1
rm -f applications/ninarix.desktop mime/packages/ninarix.xml icons/hicolor/*/apps/ninarix.* ninarix/demarrer
update-mime-database mime
update-desktop-database applications
said="Ninarix n'est plus là : son entrée de menu est enlevée."
notify-send Ninarix "$said" 2>/dev/null || echo "$said" >&2
)";
}

}  // namespace

DesktopFolders DesktopFolders::OfEnvironment() {
    DesktopFolders folders;
    folders.own = DataFolder();
    // The environment is read while the program starts, before anything else could change it.
    const char* value = std::getenv("XDG_DATA_DIRS");  // NOLINT(concurrency-mt-unsafe)
    std::string_view list = value && *value ? value : "/usr/local/share:/usr/share";
    while (!list.empty()) {
        const std::string_view folder = CutField(list);
        if (folder.starts_with('/')) folders.shared.emplace_back(folder);
    }
    return folders;
}

DesktopAssociation::DesktopAssociation(DesktopFolders folders, Icons icons)
    : folders_(std::move(folders)), icons_(std::move(icons)) {}

DesktopAssociation::~DesktopAssociation() {
    // What still runs then ends without the program.
    ToolsEnded(std::chrono::milliseconds(0));
}

std::string DesktopAssociation::OtherOwner(std::string_view extension) const {
    constexpr std::uint64_t sizeLimit = 16U << 20U;
    const std::string pattern = std::string("*.").append(extension);
    std::string owner;
    int heaviest = -1;
    std::string globs;
    const auto look = [&](const std::string& folder) {
        if (ReadWholeFile(folder + "/mime/globs2", globs, sizeLimit) == FileState::Read) {
            FindOwner(globs, pattern, heaviest, owner);
        }
    };
    if (!folders_.own.empty()) look(folders_.own);
    for (const std::string& folder : folders_.shared) look(folder);
    return owner;
}

bool DesktopAssociation::Publish(const FileAssociation& association) {
    if (!SharedEntryWorks()) return PublishOwn(association);
    TakeBack();
    return true;
}

bool DesktopAssociation::PublishOwn(const FileAssociation& association) {
    if (folders_.own.empty() || !IsProgram(association.program)) return false;
    FileAssociation own = association;
    own.program = folders_.own + launcherFile;
    std::error_code failed;
    if (!WritePublished(own.program, Launcher(association.program))) return false;
    fs::permissions(own.program, fs::perms::owner_exec, fs::perm_options::add, failed);
    if (failed || !WriteFiles(own)) return false;
    UpdateCaches();
    return true;
}

bool DesktopAssociation::WriteFiles(const FileAssociation& association) const {
    if (folders_.own.empty() || !WritePublished(folders_.own + mimeFile, MimePackage(association)) ||
        !PublishProgram(association)) {
        return false;
    }
    PublishIcons();
    return true;
}

void DesktopAssociation::CompleteIcons() const {
    std::error_code failed;
    if (!folders_.own.empty() && fs::exists(folders_.own + entryFile, failed) &&
        !fs::exists(folders_.own + themeFolder + drawingFile, failed)) {
        PublishIcons();
    }
}

// The first entry of this name is the one that counts.
bool DesktopAssociation::SharedEntryWorks() const {
    for (const std::string& folder : folders_.shared) {
        std::ifstream entry(folder + entryFile);
        if (!entry) continue;
        constexpr std::string_view key = "TryExec=";
        for (std::string line; std::getline(entry, line);) {
            if (line.starts_with(key)) return IsProgram(line.substr(key.size()));
        }
        return false;
    }
    return false;
}

void DesktopAssociation::TakeBack() {
    std::error_code failed;
    if (folders_.own.empty() || !fs::remove(folders_.own + entryFile, failed)) return;
    fs::remove(folders_.own + mimeFile, failed);
    fs::remove(folders_.own + launcherFile, failed);
    for (const auto& size : fs::directory_iterator(folders_.own + themeFolder, failed)) {
        for (const char* icon : {"/apps/ninarix.png", "/apps/ninarix.svg"}) {
            fs::remove(size.path().string() + icon, failed);
        }
    }
    UpdateCaches();
}

void DesktopAssociation::UpdateCaches() {
    StartTool("update-mime-database", folders_.own + "/mime");
    StartTool("update-desktop-database", folders_.own + "/applications");
}

bool DesktopAssociation::PublishProgram(const FileAssociation& association) const {
    // Even quoted correctly, blanks or "%" in a path break openers that read the command their own way.
    const std::string command =
        NeedsQuotes(association.program) ? QuotedForEntry(association.program) : association.program;
    return WritePublished(folders_.own + entryFile,
                          "[Desktop Entry]\n"
                          "Type=Application\n"
                          "Version=1.0\n"
                          "Name=Ninarix\n"
                          "Name[fr]=Ninarix\n"
                          "GenericName=Sudoku\n"
                          "GenericName[fr]=Sudoku\n"
                          "Comment=Play Sudoku and get help with it\n"
                          "Comment[fr]=Jouer au Sudoku et se faire aider\n"
                          "Exec=" +
                              command +
                              " %f\n"
                              "TryExec=" +
                              AsEntryText(association.program) +
                              "\n"
                              "Icon=ninarix\n"
                              "Terminal=false\n"
                              "StartupNotify=true\n"
                              "StartupWMClass=Ninarix\n"
                              "Categories=Game;LogicGame;\n"
                              "Keywords=sudoku;puzzle;grid;nx3;\n"
                              "Keywords[fr]=sudoku;grille;jeu;chiffres;nx3;\n"
                              "MimeType=" +
                              std::string(MimeType) + ";\n");
}

void DesktopAssociation::PublishIcons() const {
    if (!icons_) return;
    const std::string theme = folders_.own + themeFolder;
    for (const IconFile& icon : icons_()) {
        const std::string size = std::to_string(icon.size);
        std::string file = theme;
        if (icon.size == 0) {
            file += drawingFile;
        } else {
            file.append("/").append(size).append("x").append(size).append("/apps/ninarix.png");
        }
        WritePublished(file, icon.bytes);
    }
    // A changed theme folder is what makes desktops drop the cache they have of it.
    std::error_code ignored;
    fs::last_write_time(theme, fs::file_time_type::clock::now(), ignored);
}

void DesktopAssociation::StartTool(const char* tool, const std::string& folder) {
    // No shell reads the folder's name. A tool that is missing ends at once, one that hangs after a minute.
    std::string arguments[] = {"timeout", "60", tool, folder};
    char* const argumentList[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                                  arguments[3].data(), nullptr};
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    // In a session of its own the tool ends its work even if the program's terminal is closed.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t process = 0;
    if (posix_spawnp(&process, arguments[0].c_str(), &files, &attributes, argumentList, environ) == 0) {
        tools_.push_back(process);
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
}

bool DesktopAssociation::ToolsEnded(std::chrono::milliseconds longest) {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    for (;;) {
        std::erase_if(tools_, [](int process) { return waitpid(process, nullptr, WNOHANG) != 0; });
        if (tools_.empty()) return true;
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace platform
