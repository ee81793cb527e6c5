// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "apps/cli/CommandFailure.h"

/// Where a command's words go: results to standard output, messages to standard error.
///
/// Everything that comes from a package or a course file is made safe for a terminal: control characters show
/// as U+FFFD.
class CommandOutput {
 public:
  enum class Form { Text, Json };

  CommandOutput(std::ostream& resultStream, std::ostream& messageStream)
      : results(resultStream), messages(messageStream) {}

  void SetForm(Form resultForm) { form = resultForm; }

  /// One line of the result.
  void PrintLine(std::string_view line);
  /// A result that is text already, such as JSON.
  void PrintDocument(std::string_view document);
  /// Shows the text and waits for nothing: what was printed before is brought out too.
  void Prompt(std::string_view text);
  /// A message that asks for nothing.
  void Note(std::string_view message);
  /// "warning: " and the message.
  void Warn(std::string_view message);
  /// A failure with its reasons indented under it.
  void Explain(const CommandFailure& failure);
  /// Each failure with its reasons indented under it; as JSON also one object that tells the first, with the
  /// others in "more". Returns the gravest status.
  ExitStatus Fail(const std::vector<CommandFailure>& failures);

  [[nodiscard]] bool IsJson() const { return form == Form::Json; }
  /// Called before anything is written, to clear what else stands on the terminal.
  void SetBeforeWriting(std::function<void()> action) { beforeWriting = std::move(action); }

 private:
  void Prepare() const;

  std::ostream& results;
  std::ostream& messages;
  Form form = Form::Text;
  std::function<void()> beforeWriting;
};

/// The text on one line, with every control character replaced by U+FFFD.
std::string MakePrintable(std::string_view text);

/// Pads every column but the last to its widest cell, two blanks apart, without blanks at the ends of lines.
/// A character counts as one place.
std::vector<std::string> AlignColumns(const std::vector<std::vector<std::string>>& rows);
