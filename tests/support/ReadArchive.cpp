// SPDX-License-Identifier: Apache-2.0
#include "support/ReadArchive.h"

#include <gtest/gtest.h>
#include <zip.h>

namespace {

zip_stat_t Stat(zip_t* archive, const std::string& name) {
  zip_stat_t status = {};
  EXPECT_EQ(zip_stat(archive, name.c_str(), 0, &status), 0) << name;
  return status;
}

}  // namespace

ReadArchive::ReadArchive(const TzPath& path)
    : archive(zip_open(path.GetNative().c_str(), ZIP_CHECKCONS | ZIP_RDONLY, nullptr)) {}

ReadArchive::~ReadArchive() {
  if (archive != nullptr) zip_discard(archive);
}

std::vector<std::string> ReadArchive::Names() const {
  std::vector<std::string> names;
  for (zip_int64_t index = 0; IsOpen() && index < zip_get_num_entries(archive, 0); ++index) {
    names.emplace_back(zip_get_name(archive, static_cast<zip_uint64_t>(index), ZIP_FL_ENC_STRICT));
  }
  return names;
}

bool ReadArchive::IsDeflated(const std::string& name) const {
  return Stat(archive, name).comp_method == ZIP_CM_DEFLATE;
}

std::uint64_t ReadArchive::Size(const std::string& name) const { return Stat(archive, name).size; }

std::string ReadArchive::Content(const std::string& name) const { return Read(name, Size(name), 0); }

std::string ReadArchive::Packed(const std::string& name) const {
  return Read(name, Stat(archive, name).comp_size, ZIP_FL_COMPRESSED);
}

std::string ReadArchive::Read(const std::string& name, std::uint64_t size, unsigned flags) const {
  std::string content(size, '\0');
  zip_file_t* file = zip_fopen(archive, name.c_str(), flags);
  EXPECT_NE(file, nullptr) << name;
  if (file == nullptr) return {};
  EXPECT_EQ(zip_fread(file, content.data(), size), static_cast<zip_int64_t>(size)) << name;
  EXPECT_EQ(zip_fclose(file), 0) << name;
  return content;
}
