// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <new>
#include <ostream>

#include "apps/cli/BuildCommand.h"
#include "apps/cli/CheckCommand.h"
#include "apps/cli/InspectCommand.h"

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
    "  files: [intro.zip, doors.zip]\n"
    "\n"
    "Template, identifier and files are needed. Paths are relative to the course file.\n"
    "\n";

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
    "  1  the package couldn't be read: no permission, disk fault\n"
    "  2  the command line is wrong, or there is no such file\n"
    "  3  errors were found; with --strict, or warnings\n";

/// The words of the command line, and what they said.
class Arguments {
 public:
  Arguments() : app("Makes SCORM packages of SCO packages.", "plexo") {
    app.set_version_flag("--version", "plexo " PLEXO_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.formatter(std::make_shared<UsageFormatter>("plexo COMMAND ARGUMENTS"));
    app.require_subcommand(1);
    app.footer(std::string("'plexo COMMAND --help' tells more of a command.\n\n") + kStatuses);
    DefineBuild();
    DefineInspect();
    DefineCheck();
  }

  /// Throws `CLI::ParseError`, also when help or the version is asked for.
  void Parse(int argumentCount, const char* const* arguments) { app.parse(argumentCount, arguments); }

  [[nodiscard]] bool IsBuild() const { return build->parsed(); }
  [[nodiscard]] bool IsCheck() const { return check->parsed(); }
  [[nodiscard]] bool WantsJson() const { return isJson; }
  [[nodiscard]] bool IsQuiet() const { return isQuiet; }
  [[nodiscard]] const InspectOptions& GetInspectOptions() const { return inspectOptions; }
  [[nodiscard]] BuildOptions GetBuildOptions() const {
    BuildOptions options = buildOptions;
    if (isForced) options.existing = PackageTarget::Existing::Replace;
    if (isQuiet) options.report = BuildOptions::Report::PathOnly;
    return options;
  }
  [[nodiscard]] CheckOptions GetCheckOptions() const {
    CheckOptions options = checkOptions;
    if (isList) options.package.clear();
    if (isStrict) options.failing = CheckOptions::Failing::Warnings;
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
  void DefineBuild() {
    build = app.add_subcommand("build", "Make a package of a course file");
    build->formatter(std::make_shared<UsageFormatter>("plexo build COURSE.yaml -o PACKAGE.zip [OPTIONS]"));
    build->add_option("COURSE.yaml", buildOptions.courseFile, "The course file")->required()->type_name("");
    build->add_option("-o,--output", buildOptions.package, "The package to write; its folder must exist")
        ->required()
        ->type_name("PACKAGE.zip");
    build->add_flag("--force", isForced, "Replace an existing package");
    build->add_flag("--quiet", isQuiet, "Print the package's path only, and no progress");
    build->add_flag("--json", isJson, "Print the result, or the error, as JSON");
    build
        ->add_option("--working-folder", buildOptions.workingFolder,
                     "Put the course together in this new or empty folder, and leave it there")
        ->type_name("DIR");
    build->footer(std::string(kBuildNotes) + kStatuses);
  }

  void DefineInspect() {
    inspect = app.add_subcommand("inspect", "Say what a course would take from a SCO package's manifest");
    inspect->formatter(std::make_shared<UsageFormatter>("plexo inspect FILE.zip [OPTIONS]"));
    inspect->add_option("FILE.zip", inspectOptions.package, "The SCO package")->required()->type_name("");
    inspect
        ->add_option("--scorm", inspectOptions.scormVersion,
                     "Read it for a course of this version instead of its own")
        ->type_name("1.2|2004");
    inspect->add_flag("--json", isJson, "Print the result, or the error, as JSON");
    inspect->footer(kStatuses);
  }

  void DefineCheck() {
    check = app.add_subcommand("check", "Say whether a SCORM package will work");
    check->formatter(
        std::make_shared<UsageFormatter>("plexo check PACKAGE.zip [OPTIONS] | plexo check --list"));
    auto* choice = check->add_option_group("Either");
    choice->add_option("PACKAGE.zip", checkOptions.package, "The package, of Plexo or any other maker")
        ->type_name("");
    choice->add_flag("--list", isList, "Print the table of all findings, in Markdown");
    choice->require_option(1);
    check->add_flag("--strict", isStrict, "Let warnings fail the package too");
    check->add_flag("--json", isJson, "Print the findings, or the error, as JSON");
    check->footer(kCheckStatuses);
  }

  CLI::App app;
  CLI::App* build = nullptr;
  CLI::App* inspect = nullptr;
  CLI::App* check = nullptr;
  BuildOptions buildOptions;
  InspectOptions inspectOptions;
  CheckOptions checkOptions;
  bool isForced = false;
  bool isQuiet = false;
  bool isJson = false;
  bool isList = false;
  bool isStrict = false;
};

ExitStatus RunCommand(const Arguments& arguments, CommandOutput& output) {
  const std::string& version = arguments.GetInspectOptions().scormVersion;
  if (!version.empty() && version != "1.2" && version != "2004") {
    return output.Fail({{ExitStatus::Usage, "--scorm", "'" + version + "' must be 1.2 or 2004", {}}});
  }
  const bool showsProgress = !arguments.IsQuiet() && !output.IsJson();
  CommandSession session(showsProgress ? ProgressBar::Display::Shown : ProgressBar::Display::Hidden);
  output.SetBeforeWriting([&session] { session.GetProgressBar().Clear(); });
  ExitStatus status = ExitStatus::Done;
  if (arguments.IsBuild()) {
    status = BuildCommand(arguments.GetBuildOptions(), session, output).Run();
  } else if (arguments.IsCheck()) {
    status = CheckCommand(arguments.GetCheckOptions(), session, output).Run();
  } else {
    status = InspectCommand(arguments.GetInspectOptions(), session, output).Run();
  }
  output.SetBeforeWriting({});
  return status;
}

ExitStatus RunGuarded(const Arguments& arguments, CommandOutput& output) {
  const auto fail = [&output](const std::string& message) {
    output.SetBeforeWriting({});
    return output.Fail({{ExitStatus::Machine, "plexo", message, {}}});
  };
  try {
    return RunCommand(arguments, output);
  } catch (const std::bad_alloc&) {
    return fail("out of memory");
  } catch (const std::exception& exception) {
    return fail(exception.what());
  }
}

}  // namespace

int RunCommandLine(int argumentCount, const char* const* arguments, std::ostream& results,
                   std::ostream& messages) {
  Arguments parsed;
  const auto end = arguments + argumentCount;
  const bool wantsJson = std::find(arguments, end, std::string_view("--json")) != end;
  CommandOutput output(results, messages, wantsJson ? CommandOutput::Form::Json : CommandOutput::Form::Text);
  ExitStatus status = ExitStatus::Done;
  try {
    parsed.Parse(argumentCount, arguments);
    status = RunGuarded(parsed, output);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      parsed.PrintHelp(error, results);
    } else {
      const std::string command = parsed.GetCommandName();
      status =
          output.Fail({{ExitStatus::Usage, command, error.what(), {"'" + command + " --help' tells more"}}});
    }
  }
  results.flush();
  if (!results.good()) {
    output.Explain({ExitStatus::Machine, "standard output", "can't write", {}});
    status = std::max(status, ExitStatus::Machine);
  }
  return static_cast<int>(status);
}
