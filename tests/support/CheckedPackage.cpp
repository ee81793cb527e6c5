// SPDX-License-Identifier: Apache-2.0
#include "support/CheckedPackage.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr const char* kManifest = "imsmanifest.xml";

std::string Manifest(const std::string& attributes, const std::string& version, const std::string& typeName,
                     const std::string& sequencing) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest identifier="COURSE" )" +
         attributes + R"(>
  <metadata>
    <schema>ADL SCORM</schema>
    <schemaversion>)" +
         version + R"(</schemaversion>
    <!--metadata-->
  </metadata>
  <organizations default="ORG">
    <organization identifier="ORG">
      <title>Course</title>
      <item identifier="FIRST" identifierref="RES-A">
        <title>First</title>
        <!--first-->
      </item>
      <item identifier="SECOND" identifierref="RES-B">
        <title>Second</title>
        <!--second-->
      </item>
      <!--items-->
      )" +
         sequencing +
         R"(
    </organization>
    <!--organizations-->
  </organizations>
  <resources>
    <resource identifier="RES-A" type="webcontent" )" +
         typeName + R"(="sco" href="a/index.htm">
      <file href="a/index.htm"/>
    </resource>
    <resource identifier="RES-B" type="webcontent" )" +
         typeName + R"(="sco" href="b/index.htm">
      <file href="b/index.htm"/>
      <!--file-->
    </resource>
    <!--resources-->
  </resources>
  <!--end-->
</manifest>
)";
}

}  // namespace

CheckedPackage::CheckedPackage(const std::string& manifest, const std::string& page) {
  archive.entries = {{.name = kManifest, .content = manifest},
                     {.name = "a/index.htm", .content = page},
                     {.name = "b/index.htm", .content = page}};
}

CheckedPackage CheckedPackage::Scorm12() {
  return {Manifest(R"(version="1.0" xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2")"
                   R"( xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2")",
                   "1.2", "adlcp:scormtype", ""),
          "<script>API.LMSInitialize(''); API.LMSSetValue('cmi.core.lesson_status', 'passed'); "
          "API.LMSFinish('')</script>"};
}

CheckedPackage CheckedPackage::Scorm2004() {
  return {Manifest(R"(version="1.3" xmlns="http://www.imsglobal.org/xsd/imscp_v1p1")"
                   R"( xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3")"
                   R"( xmlns:imsss="http://www.imsglobal.org/xsd/imsss")",
                   "2004 3rd Edition", "adlcp:scormType",
                   R"(<imsss:sequencing><imsss:controlMode flow="true"/></imsss:sequencing>)"),
          Page2004("cmi.completion_status cmi.success_status")};
}

std::string CheckedPackage::Page2004(const std::string& names) {
  return "<script>const api = parent.API_1484_11; api.Initialize(''); /* " + names +
         " */ api.Terminate('')</script>";
}

RawEntry& CheckedPackage::Find(const std::string& name) {
  const auto found = std::find_if(archive.entries.begin(), archive.entries.end(),
                                  [&name](const RawEntry& entry) { return entry.name == name; });
  if (found == archive.entries.end()) throw std::invalid_argument("no entry " + name);
  return *found;
}

CheckedPackage& CheckedPackage::Replace(std::string_view find, const std::string& replacement) {
  std::string& text = Find(kManifest).content;
  const std::size_t at = text.find(find);
  if (at == std::string::npos || text.find(find, at + 1) != std::string::npos) {
    throw std::invalid_argument("not once in the manifest: " + std::string(find));
  }
  text.replace(at, find.size(), replacement);
  return *this;
}

CheckedPackage& CheckedPackage::Cut(std::string_view from, std::string_view to) {
  std::string& text = Find(kManifest).content;
  const std::size_t start = text.find(from);
  const std::size_t end = start != std::string::npos ? text.find(to, start) : start;
  if (end == std::string::npos) throw std::invalid_argument("not in the manifest: " + std::string(from));
  text.erase(start, end + to.size() - start);
  return *this;
}

CheckedPackage& CheckedPackage::Sequence(const std::string& mark, const std::string& content) {
  return At(mark, "<imsss:sequencing>" + content + "</imsss:sequencing>");
}

CheckedPackage& CheckedPackage::File(const std::string& name, const std::string& content) {
  const auto found = std::find_if(archive.entries.begin(), archive.entries.end(),
                                  [&name](const RawEntry& entry) { return entry.name == name; });
  if (found == archive.entries.end()) return Entry({.name = name, .content = content});
  found->content = content;
  return *this;
}

CheckedPackage& CheckedPackage::Listed(const std::string& name, const std::string& content) {
  return File(name, content).At("file", "<file href=\"" + name + "\"/>");
}

CheckedPackage& CheckedPackage::Entry(const RawEntry& entry) {
  archive.entries.push_back(entry);
  return *this;
}

CheckedPackage& CheckedPackage::Rename(const std::string& name, const std::string& newName) {
  Find(name).name = newName;
  return *this;
}

CheckedPackage& CheckedPackage::Zip64() {
  archive.zip64End = true;
  return *this;
}

CheckedPackage& CheckedPackage::Remove(const std::string& name) {
  std::erase_if(archive.entries, [&name](const RawEntry& entry) { return entry.name == name; });
  return *this;
}
