// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/BuildCommand.h"

#include <algorithm>
#include <new>

#include "apps/cli/Interrupt.h"
#include "apps/cli/ManifestFaults.h"
#include "apps/cli/PackageIntake.h"
#include "apps/cli/PackageReasons.h"
#include "apps/course/CourseFile.h"
#include "apps/course/CourseModules.h"
#include "apps/course/SafeFileName.h"
#include "core/PlexoCourseModel.h"
#include "core/PlexoInstallFolder.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "core/PlexoTreeId.h"
#include "host/files/TzFileUtil.h"
#include "intake/PlexoAddFileDriver.h"
#include "publish/PlexoIdentifiers.h"
#include "publish/PlexoPublisher.h"

namespace {

CommandFailure MakeInterrupted(const std::string& subject) {
  return {ExitStatus::Interrupted, subject, "interrupted; no package was written", {}};
}

ExitStatus GetStatus(CourseFault fault) {
  switch (fault) {
    case CourseFault::Refused:
      return ExitStatus::Refused;
    case CourseFault::Machine:
      return ExitStatus::Machine;
    case CourseFault::Stopped:
      return ExitStatus::Interrupted;
    case CourseFault::Wrong:
      break;
  }
  return ExitStatus::Usage;
}

PlexoCourseType GetCourseType(CourseTemplate courseTemplate) {
  switch (courseTemplate) {
    case CourseTemplate::SimpleRemediation:
      return PlexoCourseType::CONTENT_POST;
    case CourseTemplate::TestRollup:
      return PlexoCourseType::PRE_CONTENT_POST;
    case CourseTemplate::MultipleScos:
      break;
  }
  return PlexoCourseType::LINEAR;
}

std::string GetLocation(const std::string& path, const CourseFileError& error) {
  if (error.line == 0) return path;
  return path + ":" + std::to_string(error.line) + ":" + std::to_string(error.column);
}

struct PlaceInPackage {
  ItemKind kind;
  const char* role;
};

/// In the order of `PlexoSCOKind`.
constexpr PlaceInPackage kPlacesInPackage[] = {
    {ItemKind::PreTest, "pretest"},
    {ItemKind::PostTest, "post-test"},
    {ItemKind::Content, "content"},
    {ItemKind::Item, ""},
};

/// Sets up the course as the manifest dialog does.
void EnterDetails(const CourseDocument& course, PlexoCourseModel& model) {
  model.ResetManifestDetails();
  model.SetScormVersion(course.scormVersion);
  model.SetCourseIdentifier(course.identifier);
  if (course.title) model.SetCourseTitle(*course.title);
  model.SetCourseDescription(course.description.value_or(""));
  model.SetCourseVersion(course.version.value_or(""));
  model.SetCourseDuration(course.duration.value_or("00:00:00"));
  model.SetCourseSubject(course.subject.value_or(""));
  model.SetEnableCourseVersion(course.version.has_value());
  model.SetEnableCourseDuration(course.duration.has_value());
  model.SetEnableCourseSubject(course.subject.has_value());
  model.SetManifestDetailsEdited(true);
}

}  // namespace

BuildCommand::BuildCommand(const BuildOptions& buildOptions, CommandSession& commandSession,
                           CommandOutput& commandOutput)
    : options(buildOptions),
      session(commandSession),
      output(commandOutput),
      target(options.package),
      workingFolder(options.workingFolder) {}

ExitStatus BuildCommand::Run() {
  Failure failure = CheckOptions();
  if (failure) return output.Fail({*failure});
  if (const auto failures = ReadCourse(); !failures.empty()) return output.Fail(failures);
  failure = CheckCourse();
  if (!failure) WarnOfIdentifier();
  if (!failure) failure = MakePackage();
  if (failure) return output.Fail({*failure});
  PrintReport();
  return ExitStatus::Done;
}

BuildCommand::Failure BuildCommand::CheckOptions() const {
  Failure failure = workingFolder.Check();
  return failure ? failure : target.Check(options.existing);
}

std::vector<CommandFailure> BuildCommand::ReadCourse() {
  CourseFileResult result = ReadCourseFile(options.courseFile, &Interrupt::IsAsked);
  if (Interrupt::IsAsked()) return {MakeInterrupted(options.package)};
  std::vector<CommandFailure> failures;
  for (const CourseFileError& error : result.errors) {
    CommandFailure failure{GetStatus(error.fault), GetLocation(options.courseFile, error), error.message, {}};
    if (!error.reason.empty()) failure.reasons.push_back(error.reason);
    failures.push_back(std::move(failure));
  }
  course = std::move(result.course);
  shares = GetWeightageFractions(course.modules);
  return failures;
}

BuildCommand::Failure BuildCommand::CheckCourse() const {
  const auto isTarget = [this](const ListedFile& file) { return target.IsSameFileAs(file.path); };
  const auto holdsTarget = [&](const CourseModule& module) {
    return (module.preTest && isTarget(*module.preTest)) || (module.postTest && isTarget(*module.postTest)) ||
           std::ranges::any_of(module.content, isTarget);
  };
  if (target.IsSameFileAs(TzPath::FromNative(options.courseFile)) ||
      std::ranges::any_of(course.files, isTarget) || std::ranges::any_of(course.modules, holdsTarget)) {
    return CommandFailure{
        ExitStatus::Usage, options.package, "is a file of the course; give the package another name", {}};
  }
  return std::nullopt;
}

// The manifest dialog takes such identifiers, so the course does; XML's names can't start like that.
void BuildCommand::WarnOfIdentifier() const {
  const char first = course.identifier.front();
  if (first < '0' || first > '9') return;
  output.Warn(options.courseFile + ": the identifier '" + course.identifier +
              "' starts with a digit, which the manifest's schema forbids; put a letter in front");
}

BuildCommand::Failure BuildCommand::MakePackage() {
  Failure failure = StartCourse();
  if (!failure) failure = AddFiles();
  return failure ? failure : Publish();
}

BuildCommand::Failure BuildCommand::AddFiles() {
  Failure failure;
  Place place;
  for (const ListedFile& file : course.files) {
    if (!failure) failure = AddFile(file, place);
  }
  for (const CourseModule& module : course.modules) {
    if (!failure) failure = AddModule(module);
  }
  return failure;
}

BuildCommand::Failure BuildCommand::AddModule(const CourseModule& module) {
  PlexoModuleCourseModel* model = GetModuleCourseModel();
  Place place{
      .module = &module, .moduleIndex = moduleCount++, .moduleKey = TzString::FromNumber(GetNextTreeId())};
  const std::string number = std::to_string(place.moduleIndex + 1);
  model->AddModule(place.moduleKey, module.title.value_or("Module_" + number));
  model->SetWeightage(place.moduleKey, shares[place.moduleIndex]);
  model->SetContentForcedSequence(place.moduleKey, module.forceContentSequence);

  Failure failure;
  place.kind = PlexoSCOKind::PRE_TEST;
  if (module.preTest) failure = AddFile(*module.preTest, place);
  place.kind = PlexoSCOKind::CONTENT;
  place.index = 0;
  for (const ListedFile& file : module.content) {
    if (!failure) failure = AddFile(file, place);
  }
  place.kind = PlexoSCOKind::POST_TEST;
  if (!failure && module.postTest) failure = AddFile(*module.postTest, place);
  return failure;
}

BuildCommand::Failure BuildCommand::StartCourse() {
  if (!workingFolder.Start()) {
    return CommandFailure{
        ExitStatus::Machine, workingFolder.GetName(), "the current folder can't be found", {}};
  }
  PlexoCourseModel* model = GetCourseModel();
  if (model == nullptr) throw std::bad_alloc();
  EnterDetails(course, *model);
  model->SetPublishFolder(target.folder);
  model->SetPackageName(target.fileName);
  model->SetCourseType(GetCourseType(course.courseTemplate));
  GetModuleCourseModel()->SetCourseType(GetCourseType(course.courseTemplate));
  GetLinearCourseModel()->SetForcedSequence(course.forceSequence);
  GetModuleCourseModel()->SetModuleForcedSequence(course.forceSequence);
  const bool hasFolder = !model->GetWorkingFolder().IsEmpty() && TzFile(model->GetWorkingFolder()).Exists();
  if (hasFolder) {
    workingFolder.Own();
    return std::nullopt;
  }
  CommandFailure failure{
      ExitStatus::Machine, workingFolder.GetName(), "the working folder can't be made", {}};
  if (failure.subject.empty()) failure.subject = options.package;
  for (const TzProblem& problem : session.TakeProblems()) failure.reasons.push_back(problem.GetText());
  return failure;
}

BuildCommand::Failure BuildCommand::AddFile(const ListedFile& file, Place& place) {
  PackageIntake::Result taken = PackageIntake(course, session, output).Take(file, place.kind, place.module);
  if (Interrupt::IsAsked()) return MakeInterrupted(options.package);
  if (taken.failure) return std::move(taken.failure);
  for (const TzPath& package : taken.packages) {
    const std::optional<TzPath> named = ProvideSafeName(file, package);
    if (!named) return FailToName(file);
    if (taken.isAdopted || *named != package) standIns.emplace_back(named->GetNative(), file.name);
    if (auto failure = AddPackage(file, *named, place)) return failure;
    NotePlaced(file, place, taken.isAdopted);
    ++place.index;
  }
  return std::nullopt;
}

std::optional<TzPath> BuildCommand::ProvideSafeName(const ListedFile& file, const TzPath& package) {
  std::optional<TzPath> named = SafeFileName::Provide(package);
  if (!named || *named == package) return named;
  output.Note(file.name + ": goes into the package as '" +
              TzFileUtil::GetBaseFileName(*named).GetUTF8String() + "': an address there can't hold " +
              SafeFileName::DescribeUnsafe(TzFileUtil::GetBaseFileName(package)));
  return named;
}

CommandFailure BuildCommand::FailToName(const ListedFile& file) {
  CommandFailure failure{
      ExitStatus::Machine, file.name, "its name can't stand in a package; rename the file", {}};
  for (const TzProblem& problem : session.TakeProblems()) failure.reasons.push_back(problem.GetText());
  return failure;
}

BuildCommand::Failure BuildCommand::RefuseTakenName(const ListedFile& file, const TzPath& package,
                                                    const Place& place) {
  const TzPath scoFolder =
      PlexoAddFileDriver::GetSCOFolder(TzFileUtil::GetBaseFileName(package), place.kind, place.moduleKey);
  if (!TzFile(scoFolder).Exists()) return std::nullopt;
  const std::string words = session.GetWords("kPlexoErrorSCOFolderExists");
  CommandFailure failure{ExitStatus::Refused, file.name, words, {}};
  failure.reasons =
      PackageReasons(session, package).Explain(words, course.scormVersion, scoFolder, session.TakeProblems());
  for (std::string& reason : failure.reasons) reason = NameListedFiles(std::move(reason));
  return failure;
}

BuildCommand::Failure BuildCommand::AddPackage(const ListedFile& file, const TzPath& package,
                                               const Place& place) {
  if (auto failure = RefuseTakenName(file, package, place)) return failure;
  session.GetUI().AnswerNextChooser({package});
  const bool isPlaced = place.kind == PlexoSCOKind::LINEAR
                            ? !PlexoAddFileDriver::AddFilesToLinearCourse(GetLinearCourseModel()).empty()
                            : !PlexoAddFileDriver::AddFilesToModule(place.moduleKey, place.kind).empty();
  if (Interrupt::IsAsked()) return MakeInterrupted(options.package);
  const std::vector<std::string> boxes = session.TakeBoxTexts();
  const std::vector<TzProblem> problems = session.TakeProblems();
  PackageReasons reasons(session, package);
  const bool isMachine = HasMachineFailure(problems);
  if (boxes.empty() && isPlaced && !isMachine) {
    const PlexoCourseModel* model = GetCourseModel();
    const TzString href = model->GetSCOManifest(model->GetSCOManifestCount() - 1).href;
    const std::string fault = FindLaunchFault(href.GetUTF8String());
    if (!fault.empty()) return CommandFailure{ExitStatus::Refused, file.name, fault, {}};
    for (const std::string& reason : reasons.Describe(problems)) output.Warn(file.name + ": " + reason);
    return std::nullopt;
  }
  CommandFailure failure{isMachine ? ExitStatus::Machine : ExitStatus::Refused, file.name, {}, {}};
  failure.message = boxes.empty() ? "can't be added to the course" : boxes.front();
  const TzPath scoFolder =
      PlexoAddFileDriver::GetSCOFolder(TzFileUtil::GetBaseFileName(package), place.kind, place.moduleKey);
  failure.reasons = isMachine || boxes.empty()
                        ? reasons.Describe(problems)
                        : reasons.Explain(boxes.front(), course.scormVersion, scoFolder, problems);
  for (std::string& reason : failure.reasons) reason = NameListedFiles(std::move(reason));
  if (failure.reasons.empty()) failure.reasons.emplace_back("the cause can't be seen");
  return failure;
}

std::string BuildCommand::NameListedFiles(std::string text) const {
  for (const auto& [path, name] : standIns) {
    if (const std::size_t at = text.find(path); at != std::string::npos) text.replace(at, path.size(), name);
  }
  return text;
}

void BuildCommand::NotePlaced(const ListedFile& file, const Place& place, bool isAdopted) {
  const PlexoCourseModel* model = GetCourseModel();
  PlacedSCO sco{.source = file.name,
                .isAdopted = isAdopted,
                .manifest = model->GetSCOManifest(model->GetSCOManifestCount() - 1)};
  const PlaceInPackage& inPackage = kPlacesInPackage[static_cast<std::size_t>(place.kind)];
  const bool inModule = place.kind != PlexoSCOKind::LINEAR;
  sco.identifier = MakeIdentifier("SCO", place.index, inModule ? place.moduleIndex : kNoIndex, inPackage.kind)
                       .GetUTF8String();
  sco.role = inPackage.role;
  if (inModule) sco.moduleNumber = place.moduleIndex + 1;
  placed.push_back(std::move(sco));
}

BuildCommand::Failure BuildCommand::Publish() {
  const int result = PlexoPublisher::GetPublisher()->PublishPackage();
  if (result == 0) workingFolder.Keep();
  const std::vector<std::string> boxes = session.TakeBoxTexts();
  const std::vector<TzProblem> problems = session.TakeProblems();
  if (result == kTzCancelled) return MakeInterrupted(options.package);
  // Publishing reads and writes files of our own, so that what fails in it is the machine, but for a file
  // that no ZIP can hold.
  const bool isContent = result == kTzBadContent;
  CommandFailure failure{isContent ? ExitStatus::Refused : ExitStatus::Machine, options.package, {}, {}};
  for (const std::string& box : boxes) failure.message += (failure.message.empty() ? "" : " ") + box;
  failure.reasons = PackageReasons(session, target.folder / target.fileName).Describe(problems);
  if (result == 0) {
    if (boxes.empty() && !HasMachineFailure(problems)) return std::nullopt;
    if (boxes.empty()) {
      failure.message = "the package was written, but some files couldn't be copied into it";
    } else {
      failure.reasons.push_back("the package was written, but lacks schema documents of '" +
                                GetSchemaInstallFolder().GetNative() + "'");
    }
  } else if (failure.message.empty()) {
    failure.message = "the manifest can't be written";
    if (failure.reasons.empty()) {
      failure.reasons.push_back("'" + GetCourseModel()->GetWorkingFolder().GetNative() +
                                "' is on a full disk or can't be written to");
    }
  }
  return failure;
}

void BuildCommand::PrintReport() {
  const CourseReport report(course, options.package, placed);
  if (output.IsJson()) {
    report.PrintJson(output);
  } else if (options.report == BuildOptions::Report::PathOnly) {
    report.PrintPath(output);
  } else {
    report.PrintText(output);
  }
}
