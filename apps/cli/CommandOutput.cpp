// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CommandOutput.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "apps/cli/Interrupt.h"
#include "host/text/TzString.h"

namespace {

using Json = nlohmann::ordered_json;

std::string Join(const std::vector<std::string>& reasons) {
  std::string text;
  for (const std::string& reason : reasons) text += (text.empty() ? "" : "; ") + reason;
  return text;
}

Json DescribeFailure(const CommandFailure& failure) {
  const bool isInterrupted = failure.status == ExitStatus::Interrupted;
  return {{"subject", failure.subject},
          {"message", failure.message},
          {"reason", Join(failure.reasons)},
          {"status", isInterrupted ? Interrupt::GetStatus() : static_cast<int>(failure.status)}};
}

std::string DescribeFailures(const std::vector<CommandFailure>& failures) {
  Json document = {{"error", DescribeFailure(failures.front())}};
  for (std::size_t index = 1; index < failures.size(); ++index) {
    document["more"].push_back(DescribeFailure(failures[index]));
  }
  return document.dump(2, ' ', false, Json::error_handler_t::replace);
}

/// Number of characters of a UTF-8 text.
std::size_t CountPlaces(std::string_view text) {
  constexpr unsigned kContinuationMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char byte) {
    return (static_cast<unsigned char>(byte) & kContinuationMask) != kContinuation;
  }));
}

}  // namespace

void CommandOutput::Prepare() const {
  if (beforeWriting) beforeWriting();
}

void CommandOutput::PrintLine(std::string_view line) {
  Prepare();
  results << MakePrintable(line) << '\n';
}

void CommandOutput::PrintDocument(std::string_view document) {
  Prepare();
  results << document << '\n';
}

void CommandOutput::Prompt(std::string_view text) {
  Prepare();
  results << text << std::flush;
}

void CommandOutput::Note(std::string_view message) {
  Prepare();
  messages << MakePrintable(message) << '\n';
}

void CommandOutput::Warn(std::string_view message) {
  Prepare();
  messages << "warning: " << MakePrintable(message) << '\n';
}

void CommandOutput::Explain(const CommandFailure& failure) {
  Prepare();
  messages << MakePrintable(failure.subject + ": " + failure.message) << '\n';
  for (const std::string& reason : failure.reasons) messages << "  " << MakePrintable(reason) << '\n';
}

ExitStatus CommandOutput::Fail(const std::vector<CommandFailure>& failures) {
  ExitStatus gravest = ExitStatus::Done;
  for (const CommandFailure& failure : failures) {
    gravest = std::max(gravest, failure.status);
    Explain(failure);
  }
  if (IsJson() && !failures.empty()) PrintDocument(DescribeFailures(failures));
  return gravest;
}

std::string MakePrintable(std::string_view text) {
  constexpr char16_t kReplacement = 0xFFFD;
  std::u16string units = TzString(text).GetUnits();
  for (char16_t& unit : units) {
    const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    if (isControl) unit = kReplacement;
  }
  return TzString(units).GetUTF8String();
}

std::vector<std::string> AlignColumns(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], CountPlaces(row[column]));
    }
  }
  std::vector<std::string> lines;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
      line += row[column];
      line.append(widths[column] - CountPlaces(row[column]) + 2, ' ');
    }
    line.resize(line.find_last_not_of(' ') + 1);
    lines.push_back(line);
  }
  return lines;
}
