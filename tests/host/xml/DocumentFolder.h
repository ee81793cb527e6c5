// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/files/TzPath.h"

/// A folder of documents for one test, gone with it.
class DocumentFolder {
 public:
  DocumentFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "plexo-xml-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("can't make a folder for the test");
    folder = name;
  }
  ~DocumentFolder() { std::filesystem::remove_all(folder); }
  DocumentFolder(const DocumentFolder&) = delete;
  DocumentFolder& operator=(const DocumentFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& GetFolder() const { return folder; }

  /// Writes the document and returns where it is.
  TzPath Write(const std::string& name, std::string_view text) const {
    std::ofstream(folder / name, std::ios::binary) << text;
    return TzPath::FromNative((folder / name).string());
  }

 private:
  std::filesystem::path folder;
};
