// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseReading.h"

#include <algorithm>

#include "apps/course/CourseModules.h"
#include "apps/course/ListedFiles.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

constexpr std::string_view kCourseKeys[] = {
    "template", "scorm",          "identifier", "title", "description", "version",          "duration",
    "subject",  "force-sequence", "intake",     "files", "modules",     "completion-passes"};

struct TemplateWord {
  std::string_view name;
  CourseTemplate value;
};

constexpr TemplateWord kTemplates[] = {
    {"multiple-scos", CourseTemplate::MultipleScos},
    {"simple-remediation", CourseTemplate::SimpleRemediation},
    {"test-rollup", CourseTemplate::TestRollup},
};

struct IntakeWord {
  std::string_view word;
  CourseIntake intake;
};

constexpr IntakeWord kIntakes[] = {
    {"auto", CourseIntake::Auto},
    {"as-is", CourseIntake::AsIs},
    {"always", CourseIntake::Always},
};

std::string GetWords(const char* key) { return GetStringDictionary()->GetString(key).GetUTF8String(); }

/// Reads the map of a whole course file.
class CourseReading {
 public:
  CourseReading(const YAML::Node& map, const std::string& courseFile, CoursePurpose coursePurpose,
                const CourseStop& stop, CourseFileErrors& errorList)
      : keys(map, "the course file", kCourseKeys, errorList),
        purpose(coursePurpose),
        files(courseFile, coursePurpose, stop, errorList),
        errors(errorList) {}

  CourseDocument Read() {
    const bool isTemplateKnown = ReadTemplate();
    ReadVersion(isTemplateKnown);
    ReadIdentifier();
    course.title = ReadPlainText("title");
    course.description = ReadPlainText("description");
    course.version = ReadPlainText("version");
    ReadDuration();
    course.subject = ReadPlainText("subject");
    course.forceSequence = keys.ReadFlag("force-sequence");
    ReadIntake();
    ReadCompletion();
    if (isTemplateKnown) ReadContents();
    return std::move(course);
  }

 private:
  bool ReadTemplate() {
    keys.Require("template", "multiple-scos, simple-remediation or test-rollup");
    const auto text = keys.ReadText("template");
    if (!text) return false;
    const auto* found = std::ranges::find(kTemplates, text->text, &TemplateWord::name);
    if (found == std::end(kTemplates)) {
      errors.Add(text->mark, "unknown template '" + text->text +
                                 "'; allowed: multiple-scos, simple-remediation, test-rollup");
      return false;
    }
    course.courseTemplate = found->value;
    return true;
  }

  void ReadVersion(bool isTemplateKnown) {
    const auto text = keys.ReadText("scorm");
    if (!text) return;
    if (text->text != "1.2" && text->text != "2004") {
      errors.Add(text->mark, "'scorm' must be 1.2 or 2004");
      return;
    }
    course.scormVersion = text->text;
    if (text->text == "1.2" && isTemplateKnown && course.courseTemplate != CourseTemplate::MultipleScos) {
      errors.Add(text->mark, GetWords("kPlexoErrorFeatureUnsupportedForVersion"),
                 std::string("a '") + GetTemplateName(course.courseTemplate) + "' course needs scorm 2004");
    }
  }

  // The same rule as in the manifest dialog, whose words are used: blanks become underscores.
  void ReadIdentifier() {
    keys.Require("identifier", "the course's name in its manifest");
    const auto text = keys.ReadText("identifier");
    if (!text) return;
    if (text->text.empty()) errors.Add(text->mark, GetWords("kPlexoErrorSCORMIdentifierNotEntered"));
    course.identifier = text->text;
    std::ranges::replace(course.identifier, ' ', '_');
    const auto isAllowed = [](char byte) {
      return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
             byte == '_';
    };
    if (!std::ranges::all_of(course.identifier, isAllowed)) {
      errors.Add(text->mark, GetWords("kPlexoErrorSCORMIdentifierInvalid"));
    }
  }

  std::optional<std::string> ReadPlainText(std::string_view key) {
    auto text = keys.ReadText(key);
    return text ? std::optional(std::move(text->text)) : std::nullopt;
  }

  void ReadDuration() {
    const auto text = keys.ReadText("duration");
    if (!text) return;
    constexpr std::string_view kLargest = "99:59:59";
    bool isDuration = text->text.size() == kLargest.size();
    for (std::size_t index = 0; isDuration && index < kLargest.size(); ++index) {
      const char byte = text->text[index];
      const bool isTens = index % 3 == 0;
      if (kLargest[index] == ':') {
        isDuration = byte == ':';
      } else {
        isDuration = byte >= '0' && byte <= (isTens ? kLargest[index] : '9');
      }
    }
    if (!isDuration) errors.Add(text->mark, "'duration' must be hh:mm:ss, from 00:00:00 to 99:59:59");
    course.duration = text->text;
  }

  void ReadIntake() {
    const auto text = keys.ReadText("intake");
    if (!text) return;
    const auto* found = std::ranges::find(kIntakes, text->text, &IntakeWord::word);
    if (found == std::end(kIntakes)) {
      errors.Add(text->mark, "'intake' must be auto, as-is or always");
      return;
    }
    course.intake = found->intake;
    if (course.intake == CourseIntake::AsIs) files.RefuseOptions();
  }

  void ReadCompletion() {
    if (!keys.ReadFlag("completion-passes")) return;
    files.LetCompletionPass();
    if (course.intake != CourseIntake::AsIs) return;
    errors.Add(keys.GetKeyMark("completion-passes"), "'completion-passes' can't be had with 'intake: as-is'");
  }

  void ReadContents() {
    const bool isLinear = course.courseTemplate == CourseTemplate::MultipleScos;
    const char* foreign = isLinear ? "modules" : "files";
    if (keys.Has(foreign)) {
      errors.Add(keys.GetKeyMark(foreign), std::string("'") + foreign + "' doesn't belong to a '" +
                                               GetTemplateName(course.courseTemplate) +
                                               "' course; it lists its SCO packages in '" +
                                               (isLinear ? "files" : "modules") + "'");
    }
    if (isLinear) {
      if (purpose == CoursePurpose::Build) keys.Require("files", "the list of its SCO packages");
      course.files = files.FindAll(keys, "files");
    } else if (purpose == CoursePurpose::Build) {
      keys.Require("modules", "the list of its modules");
      const std::vector<YAML::Node> nodes = keys.ReadFilledList("modules");
      course.modules =
          ReadCourseModules(nodes, course.courseTemplate, keys.GetKeyMark("modules"), files, errors);
    } else {
      course.modules = ReadDraftModules(keys.ReadList("modules"), course.courseTemplate, files, errors);
    }
  }

  CourseKeys keys;
  CoursePurpose purpose;
  ListedFiles files;
  CourseFileErrors& errors;
  CourseDocument course;
};

}  // namespace

const char* GetTemplateName(CourseTemplate courseTemplate) {
  return std::ranges::find(kTemplates, courseTemplate, &TemplateWord::value)->name.data();
}

CourseDocument ReadCourseMap(const YAML::Node& map, const std::string& courseFile, CoursePurpose purpose,
                             const CourseStop& stop, CourseFileErrors& errors) {
  return CourseReading(map, courseFile, purpose, stop, errors).Read();
}
