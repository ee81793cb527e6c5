// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// The name of a ZIP entry: where it stands below the folder that the archive is unpacked into.
struct TzZipName {
  /// UTF-8, components separated by single slashes; empty for the folder itself.
  std::string text;
  bool isFolder = false;

  /// Text in the code page of the original IBM PC, which archives use unless they say otherwise.
  static std::string FromCodePage437(std::string_view bytes);
  static bool IsUtf8(std::string_view bytes);
  /// True for a name that some systems give to a device in every folder, with any extension and spaces
  /// behind.
  static bool IsDevice(std::string_view component);
  /// Reads a name as an archive holds it, with slashes or back-slashes. Returns what is wrong with it, null
  /// if nothing is.
  const char* Read(std::string_view written);
  /// As it may appear in a message, whatever the bytes are.
  static std::string ForMessage(std::string_view bytes);
};
