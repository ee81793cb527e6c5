// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CourseYaml.h"

#include <yaml-cpp/eventhandler.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace {

/// Counts how deep a document's collections stand in each other, before its tree is built by recursion.
class NestingGuard : public YAML::EventHandler {
 public:
  struct TooDeep {
    YAML::Mark mark;
  };

  void OnDocumentStart(const YAML::Mark& /*mark*/) override {}
  void OnDocumentEnd() override {}
  void OnNull(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
  void OnAlias(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
  void OnScalar(const YAML::Mark& /*mark*/, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                const std::string& /*value*/) override {}
  void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                       YAML::EmitterStyle::value /*style*/) override {
    Enter(mark);
  }
  void OnSequenceEnd() override { --depth; }
  void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  YAML::EmitterStyle::value /*style*/) override {
    Enter(mark);
  }
  void OnMapEnd() override { --depth; }

 private:
  void Enter(const YAML::Mark& mark) {
    if (++depth > kDeepestCourseFile) throw TooDeep{mark};
  }

  int depth = 0;
};

std::optional<std::string> ReadCourseText(const std::string& path, CourseFileErrors& errors) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    errors.Add("doesn't exist");
    return std::nullopt;
  }
  if (std::filesystem::is_directory(status)) {
    errors.Add("is a folder; expected a course file");
    return std::nullopt;
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text(kLargestCourseFile + 1, '\0');
  if (file) file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file.is_open() || file.bad()) {
    errors.Add("can't read: " + std::generic_category().message(errno), ExitStatus::Machine);
    return std::nullopt;
  }
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() <= kLargestCourseFile) return text;
  errors.Add("is larger than " + std::to_string(kLargestCourseFile >> 20U) + " MiB");
  return std::nullopt;
}

/// Throws `NestingGuard::TooDeep`.
void CheckNesting(const std::string& text) {
  std::istringstream stream(text);
  YAML::Parser parser(stream);
  NestingGuard guard;
  while (parser.HandleNextDocument(guard)) {
  }
}

}  // namespace

std::optional<YAML::Node> LoadCourseYaml(const std::string& path, CourseFileErrors& errors) {
  const std::optional<std::string> text = ReadCourseText(path, errors);
  if (!text) return std::nullopt;
  try {
    CheckNesting(*text);
    const std::vector<YAML::Node> documents = YAML::LoadAll(*text);
    if (documents.size() > 1) {
      errors.Add(documents[1].Mark(), "a second document starts here; a course file holds one");
      return std::nullopt;
    }
    return documents.empty() ? YAML::Node() : documents.front();
  } catch (const NestingGuard::TooDeep& deep) {
    errors.Add(deep.mark, "is nested deeper than " + std::to_string(kDeepestCourseFile) + " levels");
  } catch (const YAML::Exception& exception) {
    errors.Add(exception.mark, exception.msg);
  }
  return std::nullopt;
}
