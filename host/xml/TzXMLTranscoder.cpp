// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLTranscoder.h"

#include <iconv.h>
#include <strings.h>

#include <array>
#include <cerrno>

namespace {

// Documents that carry the first name hold, as often as not, characters of the second, which adds some and
// takes none away (for Shift_JIS: but the yen sign, which there stands in the place of the back-slash).
constexpr std::array<std::array<const char*, 2>, 6> kExtensions = {{
    {"Shift_JIS", "CP932"},
    {"x-sjis", "CP932"},
    {"SJIS", "CP932"},
    {"GB2312", "GBK"},
    {"EUC-KR", "UHC"},
    {"KS_C_5601-1987", "UHC"},
}};

const char* GetSystemName(const std::string& encoding) {
  for (const auto& [name, extension] : kExtensions) {
    if (strcasecmp(name, encoding.c_str()) == 0) return extension;
  }
  return encoding.c_str();
}

}  // namespace

std::unique_ptr<TzXMLTranscoder> TzXMLTranscoder::Create(const std::string& encoding) {
  void* converter = iconv_open("UTF-8", GetSystemName(encoding));
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return nullptr;
  return std::unique_ptr<TzXMLTranscoder>(new TzXMLTranscoder(converter));
}

TzXMLTranscoder::~TzXMLTranscoder() { iconv_close(converter); }

bool TzXMLTranscoder::Convert(std::string_view piece, std::string& utf8) {
  std::string bytes = std::move(tail);
  bytes.append(piece);
  tail.clear();
  char* input = bytes.data();
  std::size_t inputLeft = bytes.size();
  std::array<char, 16384> buffer;
  while (inputLeft > 0) {
    char* output = buffer.data();
    std::size_t outputLeft = buffer.size();
    const bool isDone =
        iconv(converter, &input, &inputLeft, &output, &outputLeft) != static_cast<std::size_t>(-1);
    const int reason = isDone ? 0 : errno;
    utf8.append(buffer.data(), output);
    if (reason == EILSEQ) return false;
    if (reason == EINVAL) {
      tail.assign(input, inputLeft);
      return true;
    }
  }
  return true;
}
