// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoPdfTitle.h"

#include <string>

#include "host/files/TzFileUtil.h"
#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfKit.h"

namespace {

/// What every LMS stores of a title (SCORM 1.2 and 2004 Content Aggregation Model, smallest permitted
/// maximum).
constexpr std::size_t kMostCharacters = 200;

/// Blanks, line ends and control characters as single blanks between words.
std::string JoinWords(const std::string& text) {
  std::string joined;
  bool isBetween = false;
  for (const char byte : text) {
    constexpr unsigned char kDelete = 0x7F;
    const auto code = static_cast<unsigned char>(byte);
    if (code <= ' ' || code == kDelete) {
      isBetween = !joined.empty();
      continue;
    }
    if (isBetween) joined += ' ';
    isBetween = false;
    joined += byte;
  }
  return joined;
}

}  // namespace

TzString PlexoPdfTitle::Find(const TzPath& document) {
  TzString title;
  try {
    title = TzString(JoinWords(TzPdfKit::Open(document)->GetInformation().Get("Title").GetText()));
  } catch (const TzPdfFailure&) {
    title = {};
  }
  const bool isOfUse = !title.IsEmpty() && title.Length() <= kMostCharacters;
  return isOfUse ? title : TzFileUtil::GetBaseFileName(document);
}
