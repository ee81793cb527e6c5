// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CourseModules.h"

#include <algorithm>

#include "apps/cli/Weightage.h"

namespace {

constexpr std::string_view kModuleKeys[] = {"title",   "weightage", "force-content-sequence",
                                            "pretest", "content",   "post-test"};

/// Reads the modules of one course in order, and at the end their weightages together.
class ModuleReading {
 public:
  ModuleReading(PlexoCourseType type, ListedFiles& listedFiles, CourseFileErrors& errorList)
      : hasPreTest(type == PlexoCourseType::PRE_CONTENT_POST), files(listedFiles), errors(errorList) {}

  void ReadModule(const YAML::Node& node) {
    CourseKeys keys(node, "a module", kModuleKeys, errors);
    CourseModule module;
    if (auto title = keys.ReadText("title")) module.title = std::move(title->text);
    module.forceContentSequence = keys.ReadFlag("force-content-sequence");
    ReadPreTest(keys, module);
    keys.Require("content", "the list of its SCO packages");
    module.content = files.FindAll(keys, "content");
    keys.Require("post-test", "its test's SCO package");
    module.postTest = files.Find(keys, "post-test");
    ReadWeightage(keys);
    modules.push_back(std::move(module));
  }

  std::vector<CourseModule> Finish(const YAML::Mark& place) {
    if (percents == 0) {
      ShareWeightageEvenly(shares);
    } else if (percents < modules.size()) {
      errors.Add(withoutWeightage,
                 "'weightage' is missing here; it stands in every module, or in none to share evenly");
    } else if (weightagesAreRead) {
      CheckSum(place);
    }
    for (std::size_t index = 0; index < modules.size(); ++index) {
      modules[index].weightage = shares[index].fraction;
    }
    return std::move(modules);
  }

 private:
  void ReadPreTest(CourseKeys& keys, CourseModule& module) {
    if (hasPreTest) {
      keys.Require("pretest", "its pretest's SCO package");
    } else if (keys.Has("pretest")) {
      errors.Add(keys.GetKeyMark("pretest"), "'pretest' belongs to a 'test-rollup' course only");
      return;
    }
    module.preTest = files.Find(keys, "pretest");
  }

  void ReadWeightage(CourseKeys& keys) {
    shares.push_back({std::to_string(shares.size() + 1), {}});
    if (!keys.Has("weightage")) {
      withoutWeightage = keys.GetMark();
      return;
    }
    ++percents;
    const auto text = keys.ReadText("weightage");
    const auto fraction = text ? MakeWeightageFraction(text->text) : std::nullopt;
    if (text && !fraction) {
      errors.Add(text->mark,
                 "'weightage' must be a percentage above 0 and up to 100, with up to four decimals");
    }
    shares.back().fraction = fraction.value_or(std::string());
    weightagesAreRead = weightagesAreRead && fraction.has_value();
  }

  // LMSs add the fractions up as they stand, so there is no tolerance for a sum that is nearly the whole.
  void CheckSum(const YAML::Mark& place) {
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
  std::vector<WeightageShare> shares;
  std::size_t percents = 0;
  bool weightagesAreRead = true;
  YAML::Mark withoutWeightage;
};

}  // namespace

std::vector<CourseModule> ReadCourseModules(const std::vector<YAML::Node>& nodes, PlexoCourseType courseType,
                                            const YAML::Mark& place, ListedFiles& files,
                                            CourseFileErrors& errors) {
  ModuleReading reading(courseType, files, errors);
  for (const YAML::Node& node : nodes) {
    if (!files.Admit(node.Mark())) break;
    reading.ReadModule(node);
  }
  return reading.Finish(place);
}
