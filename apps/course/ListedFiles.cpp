// SPDX-License-Identifier: Apache-2.0
#include "apps/course/ListedFiles.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "host/files/TzFileUtil.h"
#include "host/files/TzZipName.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFileKeys[] = {"file", "item", "title", "completion-passes"};

struct Objection {
  std::string message;
  CourseFault fault = CourseFault::Wrong;
};

std::optional<Objection> ObjectToNode(const TzPath& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path.GetNative(), error);
  if (status.type() == fs::file_type::not_found) return Objection{"doesn't exist"};
  if (status.type() == fs::file_type::none) {
    const bool isTooLong = error == std::errc::filename_too_long;
    return Objection{"can't be looked at: " + error.message(),
                     isTooLong ? CourseFault::Wrong : CourseFault::Machine};
  }
  const std::string expected = "; expected a SCO package (.zip), a PDF document (.pdf) or a SWF movie (.swf)";
  if (fs::is_directory(status)) return Objection{"is a folder" + expected};
  if (!fs::is_regular_file(status)) return Objection{"isn't a file" + expected};
  return std::nullopt;
}

/// As a folder of the course; a course refuses other names without a word.
bool CanNameFolder(const std::string& baseName) {
  return !baseName.empty() && baseName != "." && baseName != ".." && baseName.find('\\') == std::string::npos;
}

std::optional<Objection> ObjectToName(const TzPath& path) {
  const std::string extension = TzFileUtil::GetExtension(path).GetUTF8String();
  if (extension != "zip" && extension != "pdf" && extension != "swf") {
    return Objection{"is no SCO package (.zip), PDF document (.pdf) or SWF movie (.swf)"};
  }
  if (!CanNameFolder(TzFileUtil::GetBaseFileName(path).GetUTF8String())) {
    return Objection{"can't name a folder in the package; rename the file"};
  }
  if (TzZipName().Read(TzFileUtil::GetBaseFileName(path).GetUTF8String()) != nullptr) {
    return Objection{
        "can't name a folder in a ZIP: it holds a control character, starts with a drive letter, is a "
        "device's "
        "name or is too long; rename the file"};
  }
  return std::nullopt;
}

/// The path with its folder resolved, where it climbs: two ways to write one path are then the same.
TzPath ResolveClimbs(const TzPath& path) {
  const fs::path written = path.GetNative();
  if (std::ranges::find(written, fs::path("..")) == written.end()) return path;
  std::error_code error;
  const fs::path parent = fs::weakly_canonical(written.parent_path(), error);
  return error ? path : TzPath::FromNative((parent / written.filename()).native());
}

ListedFile KeepForEditing(const std::string& name, const TzPath& path) {
  const bool isThere = !ObjectToNode(path).has_value();
  return ListedFile{.name = name, .path = ResolveClimbs(path), .isMissing = !isThere};
}

}  // namespace

ListedFiles::ListedFiles(const std::string& courseFile, CoursePurpose coursePurpose, CourseStop stop,
                         CourseFileErrors& errorList)
    : purpose(coursePurpose), isStopped(std::move(stop)), errors(errorList) {
  std::error_code error;
  folder = fs::absolute(courseFile, error).parent_path().native();
  if (error) errors.Add("can't tell which folder it is in: " + error.message(), CourseFault::Machine);
}

bool ListedFiles::Admit(const YAML::Mark& mark) {
  constexpr std::size_t kMost = 100'000;
  if (isStopped && isStopped()) return false;
  if (++count <= kMost) return true;
  if (count == kMost + 1) {
    errors.Add(mark,
               "a course can't have more than " + std::to_string(kMost) + " files and modules together");
  }
  return false;
}

std::optional<ListedFile> ListedFiles::Find(const CourseKeys& keys, std::string_view key) {
  const auto node = keys.ReadNode(key);
  return node ? Read(*node, "'" + std::string(key) + "'", keys.GetKeyMark(key)) : std::nullopt;
}

std::vector<YAML::Node> ListedFiles::ReadList(const CourseKeys& keys, std::string_view key) const {
  return purpose == CoursePurpose::Build ? keys.ReadFilledList(key) : keys.ReadList(key);
}

std::vector<ListedFile> ListedFiles::FindAll(const CourseKeys& keys, std::string_view key) {
  std::vector<ListedFile> found;
  for (const YAML::Node& node : ReadList(keys, key)) {
    auto file = Read(node, "an entry of '" + std::string(key) + "'", node.Mark());
    if (file) found.push_back(std::move(*file));
  }
  return found;
}

std::optional<ListedFile> ListedFiles::Read(const YAML::Node& node, const std::string& what,
                                            const YAML::Mark& place) {
  if (!node.IsMap()) {
    const auto text = ReadCourseText(node, what, place, errors);
    return text ? Look(*text) : std::nullopt;
  }
  CourseKeys keys(node, "a file", kFileKeys, errors);
  keys.Require("file", "its path");
  const auto text = keys.ReadText("file");
  auto file = text ? Look(*text) : std::nullopt;
  const bool isPackage = !file || file->IsPackage();
  if (!isPackage || !takesOptions) {
    RefuseAdoption(keys, isPackage ? "can't be had with 'intake: as-is'" : "is for SCO packages only");
  }
  ListedFile unknown;
  ReadOptions(keys, file ? *file : unknown);
  return file;
}

void ListedFiles::ReadOptions(const CourseKeys& keys, ListedFile& file) {
  const auto read = [&](std::string_view key, std::string& value, const char* otherwise) {
    const auto text = keys.ReadText(key);
    if (!text) return;
    const bool isBlank = text->text.find_first_not_of(" \t\r\n") == std::string::npos;
    if (isBlank) errors.Add(text->mark, "'" + std::string(key) + "' is empty; leave it out " + otherwise);
    value = text->text;
  };
  read("item", file.item, "to take what there is");
  read("title", file.title, "to keep the file's own");
  if (keys.Has("completion-passes")) file.completionPasses = keys.ReadFlag("completion-passes");
}

void ListedFiles::RefuseAdoption(const CourseKeys& keys, const std::string& reason) {
  for (const std::string_view option : {"item", "completion-passes"}) {
    if (!keys.Has(option)) continue;
    errors.Add(keys.GetKeyMark(option), "'" + std::string(option) + "' " + reason);
  }
}

std::optional<ListedFile> ListedFiles::Look(const CourseText& text) {
  if (!Admit(text.mark)) return std::nullopt;
  if (text.text.empty()) {
    errors.Add(text.mark, "a file's path is empty");
    return std::nullopt;
  }
  const TzPath path = TzPath::FromNative((fs::path(folder) / text.text).native());
  if (purpose == CoursePurpose::Edit) {
    ListedFile file = KeepForEditing(text.text, path);
    file.completionPasses = completionPasses && file.IsPackage();
    return file;
  }
  std::optional<Objection> objection = ObjectToNode(path);
  if (!objection) objection = ObjectToName(path);
  if (!objection) {
    ListedFile file{text.text, path};
    file.completionPasses = completionPasses && file.IsPackage();
    return file;
  }
  errors.Add(text.mark, "'" + text.text + "' " + objection->message, {}, objection->fault);
  return std::nullopt;
}
