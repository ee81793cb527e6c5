// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseYaml.h"

#include <yaml-cpp/eventhandler.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace {

/// Looks at a text before its tree is built by recursion and its aliases are followed: it must be one
/// document, not nested too deeply, and not too large with every alias written out.
class CourseYamlGuard : public YAML::EventHandler {
 public:
  struct Refusal {
    YAML::Mark mark;
    std::string message;
  };
  struct Stopped {};

  explicit CourseYamlGuard(const CourseStop& stop) : isStopped(stop) {}

  // A character that can't start a value makes a document that is empty and doesn't move on.
  void OnDocumentStart(const YAML::Mark& mark) override {
    const bool isStuck = hasDocument && mark.pos == start.pos;
    if (isStuck) throw Refusal{mark, "a value can't start here"};
    if (hasDocument) throw Refusal{mark, "a second document starts here; a course file holds one"};
    hasDocument = true;
    start = mark;
  }
  void OnDocumentEnd() override {}
  void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { Count(mark, {1, 0}); }
  void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override { Count(mark, anchored[anchor]); }
  void OnScalar(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t anchor,
                const std::string& value) override {
    Count(mark, {1, value.size()});
    anchored[anchor] = {1, value.size()};
  }
  void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t anchor,
                       YAML::EmitterStyle::value /*style*/) override {
    Enter(mark, anchor);
  }
  void OnSequenceEnd() override { Leave(); }
  void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t anchor,
                  YAML::EmitterStyle::value /*style*/) override {
    Enter(mark, anchor);
  }
  void OnMapEnd() override { Leave(); }

 private:
  struct Extent {
    std::size_t values = 0;
    std::size_t bytes = 0;
  };
  struct Collection {
    YAML::anchor_t anchor;
    Extent before;
  };

  void Count(const YAML::Mark& mark, const Extent& more) {
    if (isStopped && isStopped()) throw Stopped();
    total.values += more.values;
    total.bytes += more.bytes;
    if (total.values <= kMostCourseValues && total.bytes <= kMostCourseText) return;
    throw Refusal{mark, "comes to more than " + std::to_string(kMostCourseValues) +
                            " values, or to more than " + std::to_string(kMostCourseText >> 20U) +
                            " MiB, with its aliases written out"};
  }

  void Enter(const YAML::Mark& mark, YAML::anchor_t anchor) {
    open.push_back({anchor, total});
    Count(mark, {1, 0});
    if (open.size() <= kDeepestCourseFile) return;
    throw Refusal{mark, "is nested deeper than " + std::to_string(kDeepestCourseFile) + " levels"};
  }

  void Leave() {
    const auto [anchor, before] = open.back();
    open.pop_back();
    anchored[anchor] = {total.values - before.values, total.bytes - before.bytes};
  }

  const CourseStop& isStopped;
  bool hasDocument = false;
  YAML::Mark start;
  Extent total;
  std::vector<Collection> open;
  std::unordered_map<YAML::anchor_t, Extent> anchored;
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
    errors.Add("can't read: " + std::generic_category().message(errno), CourseFault::Machine);
    return std::nullopt;
  }
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() <= kLargestCourseFile) return text;
  errors.Add("is larger than " + std::to_string(kLargestCourseFile >> 20U) + " MiB");
  return std::nullopt;
}

/// Throws what the guard throws.
void GuardAgainst(const std::string& text, const CourseStop& stop) {
  std::istringstream stream(text);
  YAML::Parser parser(stream);
  CourseYamlGuard guard(stop);
  while (parser.HandleNextDocument(guard)) {
  }
}

}  // namespace

std::optional<YAML::Node> LoadCourseYaml(const std::string& path, const CourseStop& stop,
                                         CourseFileErrors& errors) {
  const std::optional<std::string> text = ReadCourseText(path, errors);
  if (!text) return std::nullopt;
  try {
    GuardAgainst(*text, stop);
    return YAML::Load(*text);
  } catch (const CourseYamlGuard::Refusal& refusal) {
    errors.Add(refusal.mark, refusal.message);
  } catch (const CourseYamlGuard::Stopped&) {
    errors.Add("interrupted", CourseFault::Stopped);
  } catch (const YAML::Exception& exception) {
    errors.Add(exception.mark, exception.msg);
  }
  return std::nullopt;
}
