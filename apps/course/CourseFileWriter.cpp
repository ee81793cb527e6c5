// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseFileWriter.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <span>
#include <system_error>

#include "apps/course/CourseYamlText.h"
#include "host/files/TzReplacementFile.h"

namespace fs = std::filesystem;

namespace {

/// Names files as seen from one course file.
class PathWriter {
 public:
  PathWriter(const std::string& courseFile, CoursePaths coursePaths) : paths(coursePaths) {
    std::error_code error;
    folder = fs::absolute(courseFile, error).lexically_normal().parent_path();
    // From a folder that is reached through a link, ".." leads elsewhere than its name says.
    const fs::path real = fs::canonical(folder, error);
    if (!error && real == folder && folder.has_parent_path()) parent = folder.parent_path();
  }

  [[nodiscard]] std::string Write(const TzPath& file) const {
    const fs::path path = fs::path(file.GetNative()).lexically_normal();
    const bool isBelow = IsBelow(path, folder);
    const bool isBeside = parent != parent.root_path() && IsBelow(path, parent);
    const bool isRelative = paths == CoursePaths::Relative && (isBelow || isBeside);
    return WriteYamlText(isRelative ? path.lexically_relative(folder).native() : path.native());
  }

 private:
  static bool IsBelow(const fs::path& path, const fs::path& above) {
    if (above.empty()) return false;
    return std::ranges::mismatch(above, path).in1 == above.end();
  }

  CoursePaths paths;
  fs::path folder;
  fs::path parent;
};

class CourseFormatter {
 public:
  explicit CourseFormatter(const PathWriter& pathWriter) : paths(pathWriter) {}

  std::string Format(const CourseDocument& course) {
    Add("template", GetTemplateName(course.courseTemplate));
    Add("scorm", QuoteYamlText(course.scormVersion));
    Add("identifier", WriteYamlText(course.identifier));
    AddText("title", course.title);
    AddText("description", course.description);
    if (course.version) Add("version", QuoteYamlText(*course.version));
    if (course.duration) Add("duration", QuoteYamlText(*course.duration));
    AddText("subject", course.subject);
    if (course.forceSequence) Add("force-sequence", "true");
    Add("intake", "as-is");
    if (course.courseTemplate == CourseTemplate::MultipleScos) {
      AddFiles("files", course.files);
    } else {
      AddModules(course.modules);
    }
    return std::move(text);
  }

 private:
  void Add(const std::string& key, const std::string& value) {
    text += indent + key + ":" + (value.empty() ? "" : " ") + value + "\n";
    if (indent.ends_with("- ")) indent.replace(indent.size() - 2, 2, "  ");
  }

  void AddText(const std::string& key, const std::optional<std::string>& value) {
    if (value) Add(key, WriteYamlText(*value));
  }

  [[nodiscard]] std::string FormatFile(const ListedFile& file) const {
    const std::string path = paths.Write(file.path);
    return file.title.empty() ? path : "{file: " + path + ", title: " + WriteYamlText(file.title) + "}";
  }

  void AddFiles(const std::string& key, const std::vector<ListedFile>& files) {
    Add(key, files.empty() ? "[]" : "");
    for (const ListedFile& file : files) text += indent + "  - " + FormatFile(file) + "\n";
  }

  void AddModules(const std::vector<CourseModule>& modules) {
    Add("modules", modules.empty() ? "[]" : "");
    for (const CourseModule& module : modules) {
      indent = "  - ";
      AddText("title", module.title);
      if (module.weightage) Add("weightage", *module.weightage);
      if (module.forceContentSequence) Add("force-content-sequence", "true");
      if (module.preTest) Add("pretest", FormatFile(*module.preTest));
      AddFiles("content", module.content);
      if (module.postTest) Add("post-test", FormatFile(*module.postTest));
    }
  }

  const PathWriter& paths;
  std::string indent;
  std::string text;
};

template <typename Look>
void ForEachFile(const CourseDocument& course, const Look& look) {
  for (const ListedFile& file : course.files) look(file);
  for (const CourseModule& module : course.modules) {
    if (module.preTest) look(*module.preTest);
    for (const ListedFile& file : module.content) look(file);
    if (module.postTest) look(*module.postTest);
  }
}

}  // namespace

std::string FormatCourse(const CourseDocument& course, const std::string& path, CoursePaths paths) {
  return CourseFormatter(PathWriter(path, paths)).Format(course);
}

std::optional<TzProblem> FindUnwritableFile(const CourseDocument& course) {
  std::optional<TzProblem> problem;
  ForEachFile(course, [&](const ListedFile& file) {
    const bool isUTF8 = file.path.GetString().GetUTF8String() == file.path.GetNative();
    if (isUTF8 || problem) return;
    problem = TzProblem{kTzFailure, file.path.GetString().GetUTF8String(),
                        "its path isn't UTF-8, so that no course file can name it; rename the file"};
  });
  return problem;
}

std::optional<TzProblem> WriteCourseFile(const std::string& path, const CourseDocument& course) {
  if (auto problem = FindUnwritableFile(course)) return problem;
  return ReplaceCourseText(path, FormatCourse(course, path, CoursePaths::Relative));
}

std::optional<TzProblem> ReplaceCourseText(const std::string& path, const std::string& text) {
  errno = 0;
  TzReplacementFile file(TzPath::FromNative(path));
  const bool isWritten = file.Create() && file.Append(std::as_bytes(std::span(text))) && file.Commit();
  if (isWritten) return std::nullopt;
  return TzProblem{kTzMachineFailure, path, "can't write: " + std::generic_category().message(errno)};
}
