// SPDX-License-Identifier: MIT
#include "platform/FileRegistry.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/AsciiText.h"
#include "platform/DesktopAssociation.h"
#include "platform/FileRights.h"
#include "platform/FolderLock.h"
#include "platform/ProfileFile.h"
#include "platform/SafeFile.h"

namespace platform {

namespace {

// Lines of a section that are no value of a given name. Names never hold these characters as they stand.
constexpr std::string_view defaultValueLine = "@";
constexpr std::string_view classLine = "#";

constexpr std::string_view hexDigits = "0123456789ABCDEF";

// Whatever a profile file would trim, unquote or take for its own signs is written as %XX.
bool StandsForItself(char c) {
    const bool beyondAscii = (static_cast<unsigned char>(c) & 0x80U) != 0;
    return IsLetterOrDigit(c) || beyondAscii ||
           std::string_view("\\/.,:_-+~(){}$&!").find(c) != std::string_view::npos;
}

std::string Encoded(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        if (StandsForItself(c)) {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded.append({'%', hexDigits[byte >> 4U], hexDigits[byte & 15U]});
        }
    }
    return encoded;
}

// A "%" that no two hexadecimal digits follow was typed by hand and stands for itself.
std::string Decoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto high = i + 2 < text.size() ? hexDigits.find(text[i + 1]) : std::string_view::npos;
        const auto low = i + 2 < text.size() ? hexDigits.find(text[i + 2]) : std::string_view::npos;
        if (text[i] == '%' && high != std::string_view::npos && low != std::string_view::npos) {
            decoded += static_cast<char>(high << 4U | low);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::string SectionOf(std::uint32_t root, std::string_view path) {
    std::string section;
    for (int shift = 28; shift >= 0; shift -= 4) section += hexDigits[root >> shift & 15U];
    return section.append("\\").append(Encoded(path));
}

std::string LineOf(std::string_view valueName) {
    return valueName.empty() ? std::string(defaultValueLine) : Encoded(valueName);
}

bool IsKeyPath(std::string_view path) {
    return !path.empty() && path.front() != '\\' && path.back() != '\\' &&
           path.find("\\\\") == std::string_view::npos;
}

bool IsExtension(std::uint32_t root, std::string_view path) {
    return root == RegistryRoot::Classes && path.size() > 1 && path.front() == '.' &&
           path.find('\\') == std::string_view::npos;
}

std::string WithTerminator(std::string bytes) {
    if (bytes.empty() || bytes.back() != '\0') bytes += '\0';
    return bytes;
}

// False if there may be keys in the file that cannot be read.
bool ReadStore(const std::string& file, ProfileFile& store) {
    if (file.empty()) return false;
    const FileState state = store.Read(file);
    return state == FileState::Read || state == FileState::Missing;
}

// Makes the file's folder, too.
bool CanWrite(const std::string& file) {
    std::error_code ignored;  // a folder that is not there cannot be written
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    std::filesystem::create_directories(folder, ignored);
    return CanWriteInto(folder.string());
}

// One read, change and write that no other copy of the program comes between.
int ChangeStore(const std::string& file, const std::function<bool(ProfileFile&)>& change) {
    const FolderLock lock(file);
    ProfileFile store;
    if (!lock.MayWrite() || !ReadStore(file, store) || !change(store) || !store.Write(file)) {
        return RegistryError::AccessDenied;
    }
    return RegistryError::None;
}

// A new key is written together with its first value, in one step: a start that is cut off between the two
// would leave an extension without a type, which no later start may complete.
class StoredKey : public RegistryKey {
  public:
    StoredKey(std::string file, std::string section, std::uint32_t access)
        : file_(std::move(file)), section_(std::move(section)), access_(access) {}
    StoredKey(std::string file, std::string section, std::uint32_t access, std::string_view newClass)
        : StoredKey(std::move(file), std::move(section), access) {
        newClass_ = newClass;
    }
    ~StoredKey() override {
        if (newClass_) ChangeStore(file_, [&](ProfileFile& store) { return Exists(store); });
    }
    StoredKey(const StoredKey&) = delete;
    StoredKey& operator=(const StoredKey&) = delete;

    int SetString(std::string_view name, std::string_view bytes) override {
        if ((access_ & RegistryAccess::SetValue) == 0) return RegistryError::AccessDenied;
        const int error = ChangeStore(file_, [&](ProfileFile& store) {
            return Exists(store) && store.Set(section_, LineOf(name), Encoded(bytes));
        });
        if (error == RegistryError::None) newClass_.reset();
        return error;
    }

    int QueryString(std::string_view name, std::string& bytes) const override {
        if ((access_ & RegistryAccess::QueryValue) == 0) return RegistryError::AccessDenied;
        ProfileFile store;
        if (!ReadStore(file_, store)) return RegistryError::AccessDenied;
        const auto value = store.Value(section_, LineOf(name));
        if (!value) return RegistryError::NotFound;
        bytes = WithTerminator(Decoded(*value));
        return RegistryError::None;
    }

  private:
    // Puts a new key into the store, unless another copy of the program was faster.
    bool Exists(ProfileFile& store) const {
        return !newClass_ || store.Value(section_, classLine) ||
               store.Set(section_, classLine, Encoded(*newClass_));
    }

    std::string file_;
    std::string section_;
    std::uint32_t access_;
    std::optional<std::string> newClass_;
};

// The key of an extension that the desktop gave away: to be read, never to be changed.
class DesktopKey : public RegistryKey {
  public:
    explicit DesktopKey(std::string owner) : owner_(std::move(owner)) {}
    int SetString(std::string_view /*name*/, std::string_view /*bytes*/) override {
        return RegistryError::AccessDenied;
    }
    int QueryString(std::string_view name, std::string& bytes) const override {
        if (!name.empty()) return RegistryError::NotFound;
        bytes = WithTerminator(owner_);
        return RegistryError::None;
    }

  private:
    std::string owner_;
};

}  // namespace

FileRegistry::FileRegistry(std::string file, DesktopAssociation* desktop)
    : file_(std::move(file)), desktop_(desktop) {}

int FileRegistry::Open(std::uint32_t root, std::string_view path, std::uint32_t access,
                       std::unique_ptr<RegistryKey>& key) {
    key.reset();
    if (!IsKeyPath(path)) return RegistryError::BadPath;
    ProfileFile store;
    if (!ReadStore(file_, store)) return RegistryError::AccessDenied;
    const std::string section = SectionOf(root, path);
    if (store.Value(section, classLine)) {
        key = std::make_unique<StoredKey>(file_, section, access);
        return RegistryError::None;
    }
    if (desktop_ && IsExtension(root, path)) {
        if (std::string owner = desktop_->OtherOwner(path.substr(1)); !owner.empty()) {
            key = std::make_unique<DesktopKey>(std::move(owner));
            return RegistryError::None;
        }
    }
    return RegistryError::NotFound;
}

int FileRegistry::Create(std::uint32_t root, std::string_view path, std::string_view className,
                         std::uint32_t access, std::unique_ptr<RegistryKey>& key) {
    key.reset();
    if (!IsKeyPath(path)) return RegistryError::BadPath;
    ProfileFile store;
    if (!ReadStore(file_, store) || !CanWrite(file_)) return RegistryError::AccessDenied;
    std::string section = SectionOf(root, path);
    if (store.Value(section, classLine)) {
        key = std::make_unique<StoredKey>(file_, std::move(section), access);
    } else {
        key = std::make_unique<StoredKey>(file_, std::move(section), access, className);
    }
    if (IsExtension(root, path)) createdExtension_ = path;
    return RegistryError::None;
}

std::string FileRegistry::DefaultValue(std::string_view path) {
    std::unique_ptr<RegistryKey> key;
    std::string bytes;
    if (Open(RegistryRoot::Classes, path, RegistryAccess::QueryValue, key) != RegistryError::None ||
        key->QueryString({}, bytes) != RegistryError::None) {
        return {};
    }
    bytes.pop_back();
    return bytes;
}

void FileRegistry::AssociationsChanged() {
    const std::string extension = std::exchange(createdExtension_, {});
    if (!desktop_ || extension.empty()) return;
    const std::string type = DefaultValue(extension);
    const std::string command = DefaultValue(type + "\\shell\\Open\\command");
    constexpr std::string_view argument = " \"%1\"";
    if (!command.ends_with(argument)) return;
    desktop_->Publish(
        {extension.substr(1), command.substr(0, command.size() - argument.size()), DefaultValue(type)});
}

}  // namespace platform
