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

#include "apps/course/CourseEncoding.h"
#include "apps/course/CourseYamlFault.h"

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

  /// Where the last value starts that the text had so far, or the last key.
  [[nodiscard]] const YAML::Mark& GetLastMark() const { return last; }

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
    last = mark;
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
  YAML::Mark last;
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

/// False, with an error noted, if there are control characters but line ends and tabs: YAML allows none, no
/// manifest can hold them, and the parser would take them in silence, or as other characters.
bool CheckCharacters(const std::string& text, CourseFileErrors& errors) {
  constexpr char kDelete = '\x7F';
  YAML::Mark mark;
  for (const char byte : text) {
    const bool isControl = (byte >= 0 && byte < ' ') || byte == kDelete;
    if (isControl && byte != '\t' && byte != '\n' && byte != '\r') {
      errors.Add(mark, "a control character can't stand in a course file; delete it");
      return false;
    }
    ++mark.column;
    if (byte != '\n') continue;
    ++mark.line;
    mark.column = 0;
  }
  return true;
}

/// Throws what the guard throws. Where the file ends with a line, its end closes quotes for the parser. A
/// comment behind that line lets it notice: within quotes it is more of their text, without an end.
void GuardAgainst(std::string text, CourseYamlGuard& guard) {
  const std::size_t last = text.find_last_not_of(" \t");
  if (last != std::string::npos && text[last] == '\n') text.replace(last + 1, std::string::npos, "#");
  std::istringstream stream(text);
  YAML::Parser parser(stream);
  while (parser.HandleNextDocument(guard)) {
  }
}

}  // namespace

std::optional<YAML::Node> LoadCourseYaml(const std::string& path, const CourseStop& stop,
                                         CourseFileErrors& errors) {
  std::optional<std::string> bytes = ReadCourseText(path, errors);
  if (!bytes) return std::nullopt;
  const std::string text = DecodeCourseText(std::move(*bytes));
  errors.SetText(text);
  if (!CheckCharacters(text, errors)) return std::nullopt;
  CourseYamlGuard guard(stop);
  try {
    GuardAgainst(text, guard);
    return YAML::Load(text);
  } catch (const CourseYamlGuard::Refusal& refusal) {
    errors.Add(refusal.mark, refusal.message);
  } catch (const CourseYamlGuard::Stopped&) {
    errors.Add("interrupted", CourseFault::Stopped);
  } catch (const YAML::Exception& exception) {
    // The text in open quotes goes on to the file's end, which is no place to look for them.
    const bool isOpen = exception.msg == YAML::ErrorMsg::EOF_IN_SCALAR;
    errors.Add(isOpen ? guard.GetLastMark() : exception.mark, DescribeYamlFault(exception.msg));
  }
  return std::nullopt;
}
