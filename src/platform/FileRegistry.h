// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/Registry.h"

namespace platform {

class DesktopAssociation;

// The registry in a file: a section per key (root number and path), a line per value. A copy of the program
// that runs at the same time neither loses keys nor sees half a file; a file that cannot be read refuses
// everything and is never written over.
//
// With a desktop, an extension (".nx3" under Classes) that has no key of its own but that the desktop gives
// to another type has that type as its default value.
class FileRegistry : public Registry {
  public:
    // An empty file name refuses everything. `desktop` is borrowed and may be missing.
    explicit FileRegistry(std::string file, DesktopAssociation* desktop = nullptr);

    int Open(std::uint32_t root, std::string_view path, std::uint32_t access,
             std::unique_ptr<RegistryKey>& key) override;
    int Create(std::uint32_t root, std::string_view path, std::string_view className, std::uint32_t access,
               std::unique_ptr<RegistryKey>& key) override;
    // Publishes the type of the extension that was created last, if any was.
    void AssociationsChanged() override;

  private:
    std::string DefaultValue(std::string_view path);

    std::string file_;
    DesktopAssociation* desktop_;
    std::string createdExtension_;  // with its dot
};

}  // namespace platform
