// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfEncryption.h"

#include <algorithm>
#include <qpdf/QPDF.hh>
#include <string_view>

namespace {

/// The version from which documents have crypt filters.
constexpr int kFirstWithFilters = 4;

QPDFObjectHandle FindDictionary(QPDF& document) {
  QPDFObjectHandle trailer = document.getTrailer();
  if (!trailer.isInitialized() || !trailer.isDictionary()) return QPDFObjectHandle::newNull();
  QPDFObjectHandle encryption = trailer.getKey("/Encrypt");
  return encryption.isDictionary() ? encryption : QPDFObjectHandle::newNull();
}

std::string GetName(QPDFObjectHandle object) {
  return object.isName() ? object.getName().substr(1) : std::string();
}

int GetVersion(QPDFObjectHandle encryption) {
  QPDFObjectHandle version = encryption.getKey("/V");
  return version.isInteger() ? version.getIntValueAsInt() : 0;
}

/// The method of the filter that the key names; "None" for one that leaves data as they are.
std::string GetMethod(QPDFObjectHandle encryption, const std::string& key) {
  std::string filter = GetName(encryption.getKey(key));
  if (filter.empty() || filter == "Identity") return "None";
  QPDFObjectHandle filters = encryption.getKey("/CF");
  if (!filters.isDictionary()) return filter;
  QPDFObjectHandle found = filters.getKey("/" + filter);
  return found.isDictionary() ? GetName(found.getKey("/CFM")) : filter;
}

bool LeavesContentPlain(const QPDFObjectHandle& encryption) {
  return GetVersion(encryption) >= kFirstWithFilters && GetMethod(encryption, "/StmF") == "None" &&
         GetMethod(encryption, "/StrF") == "None";
}

}  // namespace

std::string TzPdfEncryption::DescribeRefusal(QPDF& document) {
  QPDFObjectHandle encryption = FindDictionary(document);
  if (encryption.isNull()) return {};
  const std::string handler = GetName(encryption.getKey("/Filter"));
  if (handler != "Standard") {
    return "its encryption filter '" + handler + "' isn't supported; save the document without encryption";
  }
  if (LeavesContentPlain(encryption)) {
    return "its encryption protects attachments only, and they can't be kept; save the document without "
           "encryption";
  }
  return {};
}

std::string TzPdfEncryption::FindUnknownMethod(QPDF& document) {
  static constexpr std::string_view kKnown[] = {"", "None", "V2", "AESV2", "AESV3"};
  QPDFObjectHandle encryption = FindDictionary(document);
  if (encryption.isNull() || GetVersion(encryption) < kFirstWithFilters) return {};
  for (const char* key : {"/StmF", "/StrF"}) {
    std::string method = GetMethod(encryption, key);
    if (std::ranges::find(kKnown, method) == std::end(kKnown)) return method;
  }
  return {};
}
