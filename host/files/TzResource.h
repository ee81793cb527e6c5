// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

/// A file that is embedded in a library. The bytes live as long as the library is loaded.
struct TzResource {
  /// A number in decimal ("121"), or a base name in capitals ("MOVEUP").
  std::string_view name;
  /// "adm" for property sheets, "eve" for layout sheets, else the file's extension in lower case.
  std::string_view type;
  /// The name of the source file, for messages.
  std::string_view file;
  std::string_view bytes;
};

/// What a library hands out so that others find its resources.
struct TzResourceInfo {
  std::span<const TzResource> resources;
};

/// The library's resource of this name and type, upper and lower case being the same; null if it has none.
const TzResource* GetFileResource(const TzResourceInfo& library, std::string_view name,
                                  std::string_view type);
const TzResource* GetFileResource(const TzResourceInfo& library, int number, std::string_view type);
