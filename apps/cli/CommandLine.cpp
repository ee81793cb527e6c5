// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <new>
#include <ostream>
#include <span>
#include <string_view>

#include "apps/cli/AdoptCommand.h"
#include "apps/cli/BuildCommand.h"
#include "apps/cli/CheckCommand.h"
#include "apps/cli/InspectCommand.h"
#include "apps/cli/PlayCommand.h"
#include "apps/cli/PlayNotes.h"

namespace {

constexpr const char* kStatuses =
    "Exit status:\n"
    "  0  done\n"
    "  1  the course or an input file was refused, or the package exists already\n"
    "  2  the command line or the course file is wrong\n"
    "  3  the machine failed: disk full, no permission\n";

constexpr const char* kBuildNotes =
    "A course file:\n"
    "  template: multiple-scos\n"
    "  scorm: \"2004\"               # or \"1.2\"\n"
    "  identifier: My Course 1\n"
    "  title: Fire safety\n"
    "  description: What to do when it burns\n"
    "  version: \"1.0\"\n"
    "  duration: \"01:30:00\"\n"
    "  subject: Safety\n"
    "  force-sequence: true        # the lessons in this order only\n"
    "  intake: auto                # adopt packages that don't fit; or as-is: none, always: all\n"
    "  completion-passes: true     # packages that report no success pass when they complete\n"
    "  files:\n"
    "    - intro.zip\n"
    "    - {file: doors.zip, title: Doors and exits}\n"
    "\n"
    "The templates simple-remediation and test-rollup, of SCORM 2004 only, have modules for files:\n"
    "  template: test-rollup\n"
    "  identifier: My Course 2\n"
    "  modules:\n"
    "    - title: Doors\n"
    "      weightage: 100          # percent; in all modules or in none\n"
    "      force-content-sequence: true\n"
    "      pretest: before.zip     # test-rollup only\n"
    "      content: [doors.zip, exits.zip]\n"
    "      post-test: after.zip\n"
    "\n"
    "Needed are template, identifier, and files or modules; in a module content, post-test and, with\n"
    "test-rollup, pretest. Paths are relative to the course file.\n"
    "\n";

constexpr const char* kInspectStatuses =
    "Exit status:\n"
    "  0  a course takes the package, as it is or adopted\n"
    "  1  the package or its manifest is refused\n"
    "  2  the command line is wrong, or there is no such file\n"
    "  3  the machine failed: disk full, no permission\n";

/// Prints the usage line as it is given: CLI11's own leaves out the options that are required.
class UsageFormatter : public CLI::Formatter {
 public:
  explicit UsageFormatter(std::string usageLine) : usage(std::move(usageLine)) {}

  std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override {
    return "Usage: " + usage + "\n";
  }

 private:
  std::string usage;
};

constexpr const char* kCheckStatuses =
    "Exit status:\n"
    "  0  no errors; with --strict, no warnings either\n"
    "  1  the machine failed: no permission, no memory, disk fault\n"
    "  2  the command line is wrong, or there is no such file\n"
    "  3  errors were found; with --strict, also warnings\n";

constexpr const char* kAdoptNotes =
    "The adopted package has its content in a folder of its own, one item, and every file listed. What was\n"
    "changed is told, each with its id; 'plexo check --list' has them all. An adopted package stays as it\n"
    "is when it is adopted again.\n"
    "\n"
    "A package of several items becomes one package: with --item that item's, else it is refused and its\n"
    "items are listed. With -d every item becomes a package: NAME-1.zip, NAME-2.zip ... in their order.\n"
    "Without -o and -d the package is NAME-adopted.zip, beside the source.\n"
    "\n"
    "Content of the other edition is launched through a page that translates between it and the LMS.\n"
    "\n"
    "Exit status:\n"
    "  0  done\n"
    "  1  the package was refused, or a package to write exists already\n"
    "  2  the command line is wrong, or there is no such file\n"
    "  3  the machine failed: disk full, no permission\n";

/// The words of the command line, and what they said.
class Arguments {
 public:
  Arguments() : app("Makes SCORM packages of SCO packages, PDF documents and SWF movies.", "plexo") {
    app.set_version_flag("--version", "plexo " PLEXO_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.formatter(std::make_shared<UsageFormatter>("plexo COMMAND ARGUMENTS"));
    app.require_subcommand(1);
    app.footer(
        std::string("'plexo COMMAND --help' tells more of a command.\n\n") + kStatuses +
        "For 'plexo check', 3 says that it found errors; for 'plexo play', that an expectation failed.\n");
    DefineBuild();
    DefineAdopt();
    DefineInspect();
    DefineCheck();
    DefinePlay();
  }

  /// Throws `CLI::ParseError`, also when help or the version is asked for.
  void Parse(int argumentCount, const char* const* arguments) { app.parse(argumentCount, arguments); }
  /// True when the first argument is neither a command nor an option. CLI11 answers a "--help" behind such a
  /// word with the program's help, as if the word weren't there.
  [[nodiscard]] bool StartsWithUnknownCommand(std::span<const char* const> arguments) const {
    return app.get_subcommands().empty() && arguments.size() > 1 && *arguments[1] != '-';
  }
  /// Why they couldn't be parsed.
  [[nodiscard]] std::string GetMistake(const CLI::ParseError& error,
                                       std::span<const char* const> arguments) const {
    if (!app.get_subcommands().empty()) return DescribeMistake(error);
    const std::string commands = "adopt, build, check, inspect, play";
    if (arguments.size() < 2) return "a command is missing; allowed: " + commands;
    const std::string first = std::string("'") + arguments[1] + "'";
    if (*arguments[1] == '-') return "unknown option " + first + "; first comes a command: " + commands;
    return "unknown command " + first + "; allowed: " + commands;
  }

  [[nodiscard]] bool IsBuild() const { return build->parsed(); }
  [[nodiscard]] bool IsAdopt() const { return adopt->parsed(); }
  [[nodiscard]] bool IsCheck() const { return check->parsed(); }
  [[nodiscard]] bool IsPlay() const { return play->parsed(); }
  [[nodiscard]] bool WantsJson() const { return isJson; }
  [[nodiscard]] bool IsQuiet() const { return isQuiet; }
  /// What --scorm says, of whatever command; empty without it.
  [[nodiscard]] const std::string& GetScormVersion() const {
    return adopt->parsed() ? adoptOptions.scormVersion : inspectOptions.scormVersion;
  }
  [[nodiscard]] const PlayOptions& GetPlayOptions() const { return playOptions; }
  [[nodiscard]] const InspectOptions& GetInspectOptions() const { return inspectOptions; }
  [[nodiscard]] AdoptOptions GetAdoptOptions() const {
    AdoptOptions options = adoptOptions;
    if (isForced) options.existing = PackageTarget::Existing::Replace;
    if (completionPasses) options.completion = PlexoAdoptRequest::Completion::Passes;
    return options;
  }
  [[nodiscard]] BuildOptions GetBuildOptions() const {
    BuildOptions options = buildOptions;
    if (isForced) options.existing = PackageTarget::Existing::Replace;
    if (isQuiet) options.report = BuildOptions::Report::PathOnly;
    return options;
  }
  [[nodiscard]] CheckOptions GetCheckOptions() const {
    CheckOptions options = checkOptions;
    if (isList) options.task = CheckOptions::Task::List;
    if (isStrict) options.failing = CheckOptions::Failing::Warnings;
    if (isVerbose) options.extent = CheckOptions::Extent::Everything;
    return options;
  }

  int PrintHelp(const CLI::ParseError& request, std::ostream& results) const {
    return app.exit(request, results, results);
  }
  /// The command as far as it was understood, for a hint.
  [[nodiscard]] std::string GetCommandName() const {
    const auto commands = app.get_subcommands();
    return commands.empty() ? "plexo" : "plexo " + commands.front()->get_name();
  }

 private:
  /// Each behind a comma, with those of the command's groups.
  static std::string ListOptions(const CLI::App& command) {
    std::string list;
    for (const CLI::Option* option : command.get_options()) {
      if (!option->get_positional() && option != command.get_help_ptr()) list += ", " + option->get_name();
    }
    for (const CLI::App* group : command.get_subcommands(nullptr)) list += ListOptions(*group);
    return list;
  }

  /// CLI11's words, but for two mistakes that it tells as a programmer sees them.
  [[nodiscard]] std::string DescribeMistake(const CLI::ParseError& error) const {
    std::string words = error.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
      const std::string option = words.substr(0, words.find(':'));
      return option + (words.ends_with(" missing") ? " needs a value" : " is given more than once");
    }
    const CLI::App* command = app.get_subcommands().front();
    const std::vector<std::string> unexpected = command->remaining();
    if (unexpected.empty()) return words;
    const std::string first = "'" + unexpected.front() + "'";
    if (!first.starts_with("'-"))
      return "unexpected argument " + first + "; a path that holds blanks needs quotes";
    return "unknown option " + first + "; allowed: --help" + ListOptions(*command);
  }

  void DefineBuild() {
    build = app.add_subcommand("build", "Make a package of a course file");
    build->formatter(std::make_shared<UsageFormatter>("plexo build COURSE.yaml -o PACKAGE.zip [OPTIONS]"));
    build->add_option("COURSE.yaml", buildOptions.courseFile, "The course file")
        ->required()
        ->type_name("")
        ->check(notEmpty);
    build->add_option("-o,--output", buildOptions.package, "The package to write; its folder must exist")
        ->required()
        ->type_name("PACKAGE.zip")
        ->check(notEmpty);
    build->add_flag("--force", isForced, "Replace an existing package");
    build->add_flag("--quiet", isQuiet, "Print the package's path only, and no progress");
    build->add_flag("--json", isJson, "Print the result, or the error, as JSON");
    build
        ->add_option("--working-folder", buildOptions.workingFolder,
                     "Put the course together in this new or empty folder, and leave it there")
        ->type_name("DIR")
        ->check(notEmpty);
    build->footer(std::string(kBuildNotes) + kStatuses);
  }

  void DefineAdopt() {
    adopt = app.add_subcommand("adopt", "Bring a package of any maker into the form that a course takes");
    adopt->formatter(
        std::make_shared<UsageFormatter>("plexo adopt FILE.zip [-o OUT.zip | -d FOLDER] [OPTIONS]"));
    adopt->add_option("FILE.zip", adoptOptions.package, "The package, of SCORM 1.2 or SCORM 2004")
        ->required()
        ->type_name("")
        ->check(notEmpty);
    auto* target =
        adopt->add_option("-o,--output", adoptOptions.output, "The package to write; its folder must exist")
            ->type_name("OUT.zip")
            ->check(notEmpty);
    adopt->add_option("-d,--folder", adoptOptions.folder, "Write a package of every item into this folder")
        ->type_name("FOLDER")
        ->check(notEmpty)
        ->excludes(target);
    adopt
        ->add_option("--scorm", adoptOptions.scormVersion,
                     "Make it fit a course of this version instead of its own")
        ->type_name("1.2|2004")
        ->check(notEmpty);
    adopt->add_option("--item", adoptOptions.item, "Take the item of this identifier only")
        ->type_name("ID")
        ->check(notEmpty);
    adopt->add_flag("--completion-passes", completionPasses,
                    "What completes has passed, for content that reports no success");
    adopt->add_flag("--force", isForced, "Replace existing packages");
    adopt->add_flag("--json", isJson, "Print the result, or the error, as JSON");
    adopt->footer(kAdoptNotes);
  }

  void DefineInspect() {
    inspect = app.add_subcommand("inspect", "Say what a course would take from a SCO package");
    inspect->formatter(std::make_shared<UsageFormatter>("plexo inspect FILE.zip [OPTIONS]"));
    inspect->add_option("FILE.zip", inspectOptions.package, "The SCO package")
        ->required()
        ->type_name("")
        ->check(notEmpty);
    inspect
        ->add_option("--scorm", inspectOptions.scormVersion,
                     "Read it for a course of this version instead of its own")
        ->type_name("1.2|2004")
        ->check(notEmpty);
    inspect->add_flag("--json", isJson, "Print the result, or the error, as JSON");
    inspect->footer(kInspectStatuses);
  }

  void DefineCheck() {
    check = app.add_subcommand("check", "Say whether a SCORM package will work");
    check->formatter(
        std::make_shared<UsageFormatter>("plexo check PACKAGE.zip [OPTIONS] | plexo check --list"));
    auto* choice = check->add_option_group("Either");
    choice->add_option("PACKAGE.zip", checkOptions.package, "The package, of Plexo or any other maker")
        ->type_name("")
        ->check(notEmpty);
    choice->add_flag("--list", isList, "Print the table of all findings, in Markdown");
    choice->require_option(1);
    check->add_flag("--strict", isStrict, "Let warnings fail the package too");
    check->add_flag("-v,--verbose", isVerbose, "Show all findings of each kind, not some");
    check
        ->add_option("--witness", checkOptions.witness,
                     "Print the script that shows a finding, for 'plexo play'")
        ->type_name("PLX-nnn")
        ->check(notEmpty);
    check->add_flag("--json", isJson, "Print the findings, or the error, as JSON");
    check->footer(kCheckStatuses);
  }

  void DefinePlay() {
    play = app.add_subcommand("play", "Play a learner in a SCORM 2004 package, request by request");
    play->formatter(std::make_shared<UsageFormatter>("plexo play PACKAGE.zip [SCRIPT] [OPTIONS]"));
    play->add_option("PACKAGE.zip", playOptions.package, "The package, of Plexo or any other maker")
        ->required()
        ->type_name("")
        ->check(notEmpty);
    play->add_option("SCRIPT", playOptions.script, "What the learner does")->type_name("")->check(notEmpty);
    play->add_option("--organization", playOptions.organization,
                     "Play this organization, by its identifier, instead of the default one")
        ->type_name("ID")
        ->check(notEmpty);
    play->add_option("--seed", playOptions.seed, "Select and shuffle items with this number")->type_name("N");
    play->add_flag("--json", isJson, "Print each answer, or the error, as one line of JSON");
    play->footer(kPlayNotes);
  }

  // Without a description, which the help would show with every option.
  CLI::Validator notEmpty{[](const std::string& text) { return text.empty() ? "can't be empty" : ""; }, ""};
  CLI::App app;
  CLI::App* build = nullptr;
  CLI::App* adopt = nullptr;
  CLI::App* inspect = nullptr;
  CLI::App* check = nullptr;
  CLI::App* play = nullptr;
  BuildOptions buildOptions;
  AdoptOptions adoptOptions;
  InspectOptions inspectOptions;
  CheckOptions checkOptions;
  PlayOptions playOptions;
  bool isForced = false;
  bool completionPasses = false;
  bool isQuiet = false;
  bool isJson = false;
  bool isList = false;
  bool isStrict = false;
  bool isVerbose = false;
};

ExitStatus RunCommand(const Arguments& arguments, CommandOutput& output) {
  const std::string& version = arguments.GetScormVersion();
  if (!version.empty() && version != "1.2" && version != "2004") {
    return output.Fail({{ExitStatus::Usage, "--scorm", "'" + version + "' must be 1.2 or 2004", {}}});
  }
  const bool showsProgress = !arguments.IsQuiet() && !output.IsJson();
  CommandSession session(showsProgress ? ProgressBar::Display::Shown : ProgressBar::Display::Hidden);
  output.SetBeforeWriting([&session] { session.GetProgressBar().Clear(); });
  ExitStatus status = ExitStatus::Done;
  if (arguments.IsBuild()) {
    status = BuildCommand(arguments.GetBuildOptions(), session, output).Run();
  } else if (arguments.IsAdopt()) {
    status = AdoptCommand(arguments.GetAdoptOptions(), session, output).Run();
  } else if (arguments.IsCheck()) {
    status = CheckCommand(arguments.GetCheckOptions(), session, output).Run();
  } else if (arguments.IsPlay()) {
    status = PlayCommand(arguments.GetPlayOptions(), session, output).Run();
  } else {
    status = InspectCommand(arguments.GetInspectOptions(), session, output).Run();
  }
  output.SetBeforeWriting({});
  return status;
}

/// What a failure of the machine ends with: the usual status means findings where a package is checked.
ExitStatus GetMachineStatus(const Arguments& arguments) {
  return arguments.IsCheck() ? ExitStatus::Refused : ExitStatus::Machine;
}

ExitStatus RunGuarded(const Arguments& arguments, CommandOutput& output) {
  const auto fail = [&](const std::string& message) {
    output.SetBeforeWriting({});
    return output.Fail({{GetMachineStatus(arguments), "plexo", message, {}}});
  };
  try {
    return RunCommand(arguments, output);
  } catch (const std::bad_alloc&) {
    return fail("out of memory");
  } catch (const std::exception& exception) {
    return fail(exception.what());
  }
}

/// For arguments that couldn't be parsed; a file behind "--" may have any name.
bool AsksForJson(std::span<const char* const> arguments) {
  const auto end = std::ranges::find(arguments, std::string_view("--"));
  return std::find(arguments.begin(), end, std::string_view("--json")) != end;
}

}  // namespace

int RunCommandLine(int argumentCount, const char* const* arguments, std::ostream& results,
                   std::ostream& messages) {
  const std::span<const char* const> words(arguments, static_cast<std::size_t>(argumentCount));
  Arguments parsed;
  CommandOutput output(results, messages);
  ExitStatus status = ExitStatus::Done;
  std::string unwritten = "can't write";
  try {
    parsed.Parse(argumentCount, arguments);
    if (parsed.WantsJson()) output.SetForm(CommandOutput::Form::Json);
    status = RunGuarded(parsed, output);
    if ((parsed.IsBuild() || parsed.IsAdopt()) && status == ExitStatus::Done)
      unwritten += "; the package was written";
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0 && !parsed.StartsWithUnknownCommand(words)) {
      parsed.PrintHelp(error, results);
    } else {
      if (AsksForJson(words)) output.SetForm(CommandOutput::Form::Json);
      const std::string command = parsed.GetCommandName();
      status = output.Fail({{ExitStatus::Usage,
                             command,
                             parsed.GetMistake(error, words),
                             {"'" + command + " --help' tells more"}}});
    }
  }
  results.flush();
  if (!results.good()) {
    output.Explain({ExitStatus::Machine, "standard output", unwritten, {}});
    status = std::max(status, GetMachineStatus(parsed));
  }
  return static_cast<int>(status);
}
