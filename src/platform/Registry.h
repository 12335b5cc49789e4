// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// The per-user store of named values under a tree of keys, with the access rules of the registry that file
// associations were made for. Key and value names are found without regard to letter case; the parts of a
// key's path are joined with "\".
namespace platform {

// What every registry routine returns.
namespace RegistryError {
inline constexpr int None = 0;
inline constexpr int NotFound = 2;
inline constexpr int AccessDenied = 5;  // also: the store cannot be read or written
inline constexpr int BadPath = 161;
}  // namespace RegistryError

namespace RegistryAccess {
inline constexpr std::uint32_t QueryValue = 1;
inline constexpr std::uint32_t SetValue = 2;
inline constexpr std::uint32_t All = 0x2003F;  // every right to the key and its values
}  // namespace RegistryAccess

namespace RegistryRoot {
inline constexpr std::uint32_t Classes = 0x80000000;  // file types and what opens them
}

// A key that was opened; closed when it is destroyed. An empty value name means the key's default value.
class RegistryKey {
  public:
    virtual ~RegistryKey() = default;
    // Stores exactly these bytes. Error 5 if the key was opened without the right to.
    virtual int SetString(std::string_view name, std::string_view bytes) = 0;
    // The stored bytes and, unless they end with one already, a terminating NUL. Error 2 without the value.
    virtual int QueryString(std::string_view name, std::string& bytes) const = 0;
};

class Registry {
  public:
    virtual ~Registry() = default;
    // A key exists only if it was created itself: creating a deeper one does not create those above it.
    // On an error `key` is empty.
    virtual int Open(std::uint32_t root, std::string_view path, std::uint32_t access,
                     std::unique_ptr<RegistryKey>& key) = 0;
    // Opens an existing key as well, and then leaves its class as it is. A new key exists from its first
    // value on, or when it is closed.
    virtual int Create(std::uint32_t root, std::string_view path, std::string_view className,
                       std::uint32_t access, std::unique_ptr<RegistryKey>& key) = 0;
    // Tells the desktop that file types changed, and does not wait for what it makes of it.
    virtual void AssociationsChanged() = 0;
};

}  // namespace platform
