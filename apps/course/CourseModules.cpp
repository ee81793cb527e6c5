// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseModules.h"

#include <algorithm>

#include "apps/course/Weightage.h"

namespace {

constexpr std::string_view kModuleKeys[] = {"title",   "weightage", "force-content-sequence",
                                            "pretest", "content",   "post-test"};

/// Reads what is the same for building and for editing; whether something may lack is asked of the two
/// operations below.
class ModuleReading {
 public:
  ModuleReading(CourseTemplate courseTemplate, ListedFiles& listedFiles, CourseFileErrors& errorList)
      : hasPreTest(courseTemplate == CourseTemplate::TestRollup), files(listedFiles), errors(errorList) {}

  void ReadFor(CoursePurpose purpose, const YAML::Node& node) {
    CourseKeys keys(node, "a module", kModuleKeys, errors);
    if (purpose == CoursePurpose::Build) RequireFiles(keys);
    CourseModule module;
    if (auto title = keys.ReadText("title")) module.title = std::move(title->text);
    module.forceContentSequence = keys.ReadFlag("force-content-sequence");
    if (!hasPreTest && keys.Has("pretest")) {
      errors.Add(keys.GetKeyMark("pretest"), "'pretest' belongs to a 'test-rollup' course only");
    } else {
      module.preTest = files.Find(keys, "pretest");
    }
    module.content = files.FindAll(keys, "content");
    module.postTest = files.Find(keys, "post-test");
    if (purpose == CoursePurpose::Build) {
      ReadShare(keys, module);
    } else {
      ReadPercent(keys, module);
    }
    modules.push_back(std::move(module));
  }

  /// Looks at the weightages of all modules together.
  void CheckShares(const YAML::Mark& place) {
    if (percents == 0) return;
    if (percents < modules.size()) {
      errors.Add(withoutWeightage,
                 "'weightage' is missing here; it stands in every module, or in none to share evenly");
    } else if (weightagesAreRead) {
      CheckSum(place);
    }
  }

  std::vector<CourseModule> Take() { return std::move(modules); }

 private:
  void RequireFiles(const CourseKeys& keys) const {
    if (hasPreTest) keys.Require("pretest", "its pretest's SCO package");
    keys.Require("content", "the list of its SCO packages");
    keys.Require("post-test", "its test's SCO package");
  }

  void ReadShare(const CourseKeys& keys, CourseModule& module) {
    if (!keys.Has("weightage")) {
      withoutWeightage = keys.GetMark();
      return;
    }
    ++percents;
    const auto text = keys.ReadText("weightage");
    if (text && !MakeWeightageFraction(text->text)) {
      errors.Add(text->mark,
                 "'weightage' must be a percentage above 0 and up to 100, with up to four decimals");
      weightagesAreRead = false;
    }
    weightagesAreRead = weightagesAreRead && text.has_value();
    if (text) module.weightage = text->text;
  }

  void ReadPercent(const CourseKeys& keys, CourseModule& module) {
    const auto text = keys.ReadText("weightage");
    if (!text) return;
    if (!ReadWeightagePercent(text->text)) {
      errors.Add(text->mark, "'weightage' must be a percentage from 0 to 100");
    }
    module.weightage = text->text;
  }

  // LMSs add the fractions up as they stand, so there is no tolerance for a sum that is nearly the whole.
  void CheckSum(const YAML::Mark& place) {
    std::vector<WeightageShare> shares;
    for (const std::string& fraction : GetWeightageFractions(modules)) {
      shares.push_back({std::to_string(shares.size() + 1), fraction});
    }
    const double sum = SumWeightages(shares);
    if (sum == 1.0) return;
    const auto last = std::ranges::max_element(shares, {}, &WeightageShare::key);
    const auto percent = FindExactLastPercent(shares);
    errors.Add(place,
               "the weightages must add up to exactly 100%; as fractions they come to " + FormatNumber(sum),
               percent ? "a weightage of " + *percent + " for module " + last->key + " would make it exact"
                       : "no weightage for module " + last->key +
                             " would make it exact; without any weightage all modules share evenly");
  }

  bool hasPreTest;
  ListedFiles& files;
  CourseFileErrors& errors;
  std::vector<CourseModule> modules;
  std::size_t percents = 0;
  bool weightagesAreRead = true;
  YAML::Mark withoutWeightage;
};

}  // namespace

std::vector<CourseModule> ReadCourseModules(const std::vector<YAML::Node>& nodes,
                                            CourseTemplate courseTemplate, const YAML::Mark& place,
                                            ListedFiles& files, CourseFileErrors& errors) {
  ModuleReading reading(courseTemplate, files, errors);
  for (const YAML::Node& node : nodes) {
    if (!files.Admit(node.Mark())) break;
    reading.ReadFor(CoursePurpose::Build, node);
  }
  reading.CheckShares(place);
  return reading.Take();
}

std::vector<CourseModule> ReadDraftModules(const std::vector<YAML::Node>& nodes,
                                           CourseTemplate courseTemplate, ListedFiles& files,
                                           CourseFileErrors& errors) {
  ModuleReading reading(courseTemplate, files, errors);
  for (const YAML::Node& node : nodes) {
    if (!files.Admit(node.Mark())) break;
    reading.ReadFor(CoursePurpose::Edit, node);
  }
  return reading.Take();
}

std::vector<std::string> GetWeightageFractions(const std::vector<CourseModule>& modules) {
  const bool isShared =
      std::ranges::none_of(modules, [](const CourseModule& each) { return each.weightage.has_value(); });
  std::vector<WeightageShare> shares;
  for (const CourseModule& module : modules) {
    const auto fraction = MakeWeightageFraction(module.weightage.value_or(""));
    shares.push_back({std::to_string(shares.size() + 1), fraction.value_or("")});
  }
  if (isShared) ShareWeightageEvenly(shares);
  std::vector<std::string> fractions;
  fractions.reserve(shares.size());
  for (const WeightageShare& share : shares) fractions.push_back(share.fraction);
  return fractions;
}
