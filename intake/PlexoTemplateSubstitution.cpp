// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoTemplateSubstitution.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/TzStreamUtil.h"
#include "host/session/TzProblem.h"

namespace {

constexpr char kMarker = '@';
constexpr std::string_view kTokenEnds = "<\r\" >'\n";

/// Fills a buffer up to its end.
class BoundedOutput {
 public:
  explicit BoundedOutput(std::span<char> buffer) : room(buffer) {}

  [[nodiscard]] bool Append(std::string_view text) {
    if (text.size() > room.size()) return false;
    std::ranges::copy(text, room.begin());
    room = room.subspan(text.size());
    written += text.size();
    return true;
  }
  [[nodiscard]] std::size_t GetWritten() const { return written; }

 private:
  std::span<char> room;
  std::size_t written = 0;
};

void ReportFault(const TzFile& source, std::size_t fault) {
  TzReportProblem(kTzMachineFailure, source.GetPath().GetNative(),
                  fault == PlexoTemplateSubstitution::kTokenTooLong
                      ? "the template has a placeholder of 255 bytes or more"
                      : "the template's placeholders stand for more than there is room for");
}

}  // namespace

int PlexoTemplateSubstitution::SubstituteTemplate(const TzFile& source, const TzFile& target,
                                                  const Placeholders& placeholders, std::size_t chunkSize,
                                                  std::size_t bufferSize) {
  const auto writer = TzStreamUtil::CreateFileStreamWrite(target, 0, 0, 0);
  const auto reader = writer != nullptr ? TzStreamUtil::CreateFileStreamRead(source) : nullptr;
  if (reader == nullptr) return 1;
  std::vector<char> chunk(chunkSize);
  std::vector<char> buffer(bufferSize);
  std::ptrdiff_t count = 0;
  bool isWhole = true;
  while (isWhole && (count = reader->Read(std::as_writable_bytes(std::span(chunk)))) > 0) {
    const std::size_t size = SubstitutePlaceholders(std::span(chunk).first(static_cast<std::size_t>(count)),
                                                    kMarker, placeholders, buffer);
    if (size == kTokenTooLong || size == kOutputTooSmall) {
      ReportFault(source, size);
      return 1;
    }
    isWhole = writer->Write(std::as_bytes(std::span(buffer).first(size))) == kTzSuccess;
  }
  if (count < 0 || !isWhole || writer->Close() != kTzSuccess) {
    TzReportSystemProblem(errno, target.GetPath().GetNative(), "can't write all of the page");
  }
  return 0;
}

std::size_t PlexoTemplateSubstitution::SubstitutePlaceholders(std::span<const char> input, char marker,
                                                              const Placeholders& placeholders,
                                                              std::span<char> output) {
  BoundedOutput out(output);
  for (std::string_view rest(input.data(), input.size()); !rest.empty();) {
    const std::string_view text = rest.substr(0, rest.find(marker));
    if (!out.Append(text)) return kOutputTooSmall;
    rest.remove_prefix(text.size());
    if (rest.empty()) break;
    const std::string_view token = rest.substr(0, rest.find_first_of(kTokenEnds));
    if (token.size() >= kTokenSize) return kTokenTooLong;
    rest.remove_prefix(token.size());
    const auto found = placeholders.find(TzString(token));
    if (found != placeholders.end() && !out.Append(found->second.GetUTF8String())) return kOutputTooSmall;
  }
  return out.GetWritten();
}
