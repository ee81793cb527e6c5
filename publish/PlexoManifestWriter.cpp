// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoManifestWriter.h"

#include <set>
#include <string>

#include "host/files/TzFileUtil.h"
#include "publish/PlexoNamespaces.h"
#include "publish/PlexoScorm12Metadata.h"
#include "publish/PlexoScorm2004Metadata.h"

namespace {

using namespace plexo_namespaces;

struct SchemaLocation {
  const char* schemaNamespace;
  const char* file;
};

constexpr SchemaLocation kScorm2004Locations[] = {
    {kImscp2004, "imscp_v1p1.xsd"}, {kLom, "lom.xsd"},
    {kAdlcp2004, "adlcp_v1p3.xsd"}, {kImsss, "imsss_v1p0.xsd"},
    {kAdlseq, "adlseq_v1p3.xsd"},   {kAdlnav, "adlnav_v1p3.xsd"},
};

constexpr SchemaLocation kScorm12Locations[] = {
    {kImscp12, "imscp_rootv1p1p2.xsd"},
    {kImsmd12, "imsmd_rootv1p2p1.xsd"},
    {kAdlcp12, "adlcp_rootv1p2.xsd"},
};

template <std::size_t Count>
TzString JoinLocations(const SchemaLocation (&locations)[Count]) {
  std::string joined;
  for (const auto& [schemaNamespace, file] : locations) {
    if (!joined.empty()) joined += ' ';
    joined.append(schemaNamespace).append(" ").append(file);
  }
  return joined;
}

TzString Join(const TzString& folder, const TzString& name) {
  const bool separated = name.IsEmpty() || name.At(0) == u'/' || name.At(0) == u'\\';
  return separated ? folder + name : folder + "/" + name;
}

/// A relative location in a manifest: slashes, whatever the SCO's author wrote.
TzString MakeHref(const TzString& base, const TzString& name) {
  TzString href = Join(base, name);
  href.ReplaceAll("\\", "/");
  return href;
}

/// True if the location names something below the folder that it is relative to. A SCO's manifest comes from
/// outside: it must not have a file of the author's machine copied into the package.
bool StaysInside(const TzString& location) {
  const TzPath path = TzPath() / location;
  for (const TzString& component : path.GetComponents()) {
    if (component == "..") return false;
  }
  return !path.IsEmpty();
}

}  // namespace

PlexoManifestWriter::PlexoManifestWriter(const PlexoCourseModel& courseModel)
    : course(courseModel),
      version(courseModel.GetScormVersion() == "1.2" ? PlexoManifestVersion::Scorm12
                                                     : PlexoManifestVersion::Scorm2004),
      workingFolder(courseModel.GetWorkingFolder()) {
  const TzDOMNode root = WriteRoot();
  const TzDOMNode metadata = tree.WriteEmptyNode("metadata", root);
  if (IsScorm2004()) {
    WriteScorm2004Metadata(tree, metadata, course);
  } else {
    WriteScorm12Metadata(tree, metadata, course);
  }
  WriteOrganizations(root);
  resourcesNode = tree.WriteEmptyNode("resources", root);
}

// The default namespace goes in under the name "hack:" and is renamed in the finished text: the document tree
// isn't namespace-aware, and must not take the attribute for a declaration of its own.
TzDOMNode PlexoManifestWriter::WriteRoot() {
  if (IsScorm2004()) {
    return tree.WriteNode("manifest", {},
                          {
                              {"hack:", kImscp2004},
                              {"xmlns:lom", kLom},
                              {"xmlns:xsi", kXsi},
                              {"xmlns:adlcp", kAdlcp2004},
                              {"xmlns:imsss", kImsss},
                              {"xmlns:adlseq", kAdlseq},
                              {"xmlns:adlnav", kAdlnav},
                              {"identifier", course.GetCourseIdentifier()},
                              {"xsi:schemaLocation", JoinLocations(kScorm2004Locations)},
                              {"version", "1.3"},
                          });
  }
  return tree.WriteNode("manifest", {},
                        {
                            {"hack:", kImscp12},
                            {"identifier", course.GetCourseIdentifier()},
                            {"version", "1.0"},
                            {"xmlns:adlcp", kAdlcp12},
                            {"xmlns:xsi", kXsi},
                            {"xsi:schemaLocation", JoinLocations(kScorm12Locations)},
                        });
}

void PlexoManifestWriter::WriteOrganizations(TzDOMNode root) {
  const TzString identifier = course.GetCourseIdentifier() + "_ORG";
  const TzDOMNode organizations = tree.WriteNode("organizations", root, {{"default", identifier}});
  organizationNode = tree.WriteNode("organization", organizations,
                                    {
                                        {IsScorm2004() ? "adlseq:objectivesGlobalToSystem" : "", "false"},
                                        {"identifier", identifier},
                                    });
  const TzString title = course.GetCourseTitle();
  tree.WriteTextNode("title", title.IsEmpty() ? "Course Title" : title, organizationNode);
  itemParentNode = organizationNode;
  if (!IsScorm2004()) return;
  // Rollup rules of the course need an item to sit on while the organization keeps a sequencing of its own.
  rootClusterNode = WriteItem("CLUSTER-Content_Wrapper", "Content Wrapper Item", {}, false, {}, nullptr, {});
  itemParentNode = rootClusterNode;
}

TzDOMNode PlexoManifestWriter::WriteItem(const TzString& identifier, const TzString& title,
                                         const TzString& identifierref, bool isVisible, TzDOMNode parent,
                                         const PlexoSCOManifest* manifest, const TzString& stagedFolder) {
  const TzDOMNode item = tree.WriteNode("item", parent.IsNull() ? itemParentNode : parent,
                                        {
                                            {isVisible ? "" : "isvisible", "false"},
                                            {identifierref.IsEmpty() ? "" : "identifierref", identifierref},
                                            {"identifier", identifier},
                                        });
  tree.WriteTextNode("title", title, item);
  if (manifest == nullptr) return item;

  const TzString relativeFolder = Join(stagedFolder, manifest->scoName);
  if (!manifest->metadataLocation.IsEmpty()) {
    WriteItemMetadata(item, relativeFolder, manifest->metadataLocation);
  }
  MoveUnlistedFiles(workingFolder / relativeFolder, manifest->files);
  if (manifest->hasDataFromLMS) tree.WriteTextNode("adlcp:datafromlms", manifest->dataFromLMS, item);
  if (manifest->hasTimeLimitAction) {
    tree.WriteTextNode("adlcp:timelimitaction", manifest->timeLimitAction, item);
  }
  return item;
}

void PlexoManifestWriter::WriteItemMetadata(TzDOMNode item, const TzString& relativeFolder,
                                            const TzString& location) {
  TzString flatName;
  for (const TzString& component : TzPath(relativeFolder).GetComponents()) flatName += component + "_";
  flatName += location;
  if (StaysInside(location)) {
    TzFileUtil::FileCopy(workingFolder / relativeFolder / location, workingFolder / flatName, true);
  }
  const TzDOMNode metadata = tree.WriteEmptyNode("metadata", item);
  tree.WriteTextNode("adlcp:location", flatName, metadata);
}

void PlexoManifestWriter::MoveUnlistedFiles(const TzPath& scoFolder,
                                            const std::vector<TzString>& listed) const {
  std::vector<TzPath> present;
  if (TzFileUtil::GetFileNamesInFolderAtPath(scoFolder, present, true, false) != 0) return;
  std::set<TzPath> keep;
  for (const TzString& name : listed) keep.insert(scoFolder / name);
  for (const TzPath& file : present) {
    if (keep.contains(file)) continue;
    const TzPath target = workingFolder / file.GetFileName();
    // A file that couldn't be moved stays where it is rather than nowhere.
    if (TzFileUtil::FileCopy(file, target, false)) TzFileUtil::DeleteFile(file);
  }
}

void PlexoManifestWriter::WriteResource(const TzString& stagedFolder, const PlexoSCOManifest& manifest,
                                        std::uint32_t index, std::uint32_t moduleIndex, ItemKind kind) {
  const TzString base = Join(stagedFolder, manifest.scoName);
  const TzDOMNode resource =
      tree.WriteNode("resource", resourcesNode,
                     {
                         {"href", MakeHref(base, manifest.href)},
                         {IsScorm2004() ? "adlcp:scormType" : "adlcp:scormtype", "sco"},
                         {"type", "webcontent"},
                         {"identifier", MakeIdentifier("RES", index, moduleIndex, kind)},
                     });
  for (const TzString& name : manifest.files) {
    tree.WriteNode("file", resource, {{"href", MakeHref(base, name)}});
  }
}

// The SCO's own mastery score and time limit stay out: the values are the same for every course.
void PlexoManifestWriter::WriteScorm12ItemData(TzDOMNode item) {
  tree.WriteEmptyNode("adlcp:maxtimeallowed", item);
  tree.WriteTextNode("adlcp:datafromlms", ".", item);
  tree.WriteTextNode("adlcp:masteryscore", "80", item);
  tree.WriteTextNode("adlcp:timelimitaction", "exit,message", item);
}

void PlexoManifestWriter::WritePresentation(TzDOMNode item, bool hideExitAll) {
  const TzDOMNode presentation = tree.WriteEmptyNode("adlnav:presentation", item);
  const TzDOMNode navigationInterface = tree.WriteEmptyNode("adlnav:navigationInterface", presentation);
  for (const std::string_view button : {"continue", "abandon", "abandonAll", "exitAll", "exit"}) {
    if (button == "exitAll" && !hideExitAll) continue;
    tree.WriteTextNode("adlnav:hideLMSUI", button, navigationInterface);
  }
}
