// SPDX-License-Identifier: Apache-2.0
#include "support/ScoZip.h"

#include <random>

#include "support/RawZip.h"
#include "support/TestSession.h"

namespace {

constexpr const char* kNamespaces12 = R"(xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2" )"
                                      R"(xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2")";
constexpr const char* kNamespaces2004 =
    R"(xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3" )"
    R"(xmlns:imsss="http://www.imsglobal.org/xsd/imsss")";

}  // namespace

ScoZip& ScoZip::Scorm12() {
  is2004 = false;
  return *this;
}

ScoZip& ScoZip::Scorm2004() {
  is2004 = true;
  return *this;
}

ScoZip& ScoZip::Item(const std::string& itemTitle, const std::string& launchFile) {
  title = itemTitle;
  href = launchFile;
  return *this;
}

ScoZip& ScoZip::File(const std::string& path, const std::string& content) {
  files.push_back({path, content});
  return *this;
}

ScoZip& ScoZip::ItemContent(const std::string& xml) {
  itemContent = xml;
  return *this;
}

ScoZip& ScoZip::Manifest(const std::string& text) {
  manifest = text;
  return *this;
}

ScoZip& ScoZip::InFolder(const std::string& folder) {
  prefix = folder + "/";
  return *this;
}

ScoZip& ScoZip::WithoutManifest() {
  hasManifest = false;
  return *this;
}

std::string ScoZip::GetManifest() const {
  if (manifest) return *manifest;
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  text += "<manifest identifier=\"M-" + name + "\" version=\"" + (is2004 ? "1.3" : "1.0") + "\" " +
          (is2004 ? kNamespaces2004 : kNamespaces12) + ">\n";
  text += "  <organizations default=\"O\">\n    <organization identifier=\"O\">\n";
  text += "      <item identifier=\"I-" + name + "\" identifierref=\"R\">\n        <title>" + title +
          "</title>" + itemContent + "\n      </item>\n    </organization>\n  </organizations>\n";
  text += "  <resources>\n    <resource identifier=\"R\" type=\"webcontent\" adlcp:";
  text += is2004 ? "scormType" : "scormtype";
  text += "=\"sco\" href=\"" + href + "\">\n";
  for (const Entry& file : files) text += "      <file href=\"" + file.path + "\"/>\n";
  return text + "    </resource>\n  </resources>\n</manifest>\n";
}

std::string ScoZip::Build() const {
  RawZip zip;
  if (hasManifest) zip.entries.push_back({.name = prefix + "imsmanifest.xml", .content = GetManifest()});
  for (const Entry& file : files)
    zip.entries.push_back({.name = prefix + file.path, .content = file.content});
  return zip.Build();
}

TzPath ScoZip::Save(const TzPath& folder) const {
  const TzPath path = folder / (name + ".zip");
  WriteFile(path, Build());
  return path;
}

std::string MakeNoise(std::size_t size, unsigned seed) {
  std::mt19937_64 generator(seed);
  std::string noise(size, '\0');
  for (char& byte : noise) byte = static_cast<char>(generator());
  return noise;
}
