// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoScorm12Metadata.h"

#include "publish/PlexoNamespaces.h"

namespace {

using namespace plexo_namespaces;

class Scorm12Record {
 public:
  Scorm12Record(PlexoManifestTree& manifestTree, const PlexoCourseModel& courseModel)
      : tree(manifestTree), course(courseModel) {}

  void Write(TzDOMNode metadata) {
    tree.WriteTextNode("schema", "ADL SCORM", metadata);
    tree.WriteTextNode("schemaversion", "1.2", metadata);
    const TzDOMNode lom = tree.WriteNode(
        "lom", metadata,
        {
            {"xsi:schemaLocation", TzString(kImsmd12) + " imsmd_rootv1p2p1.xsd"},
            {"xmlns:xsi", kXsi},
            // A SCORM 2004 namespace, of no effect here, and part of the format: every 1.2 package has it.
            {"xmlns:adlseq", kAdlseq},
            {"hack:", kImsmd12},
        });
    WriteGeneral(tree.WriteEmptyNode("general", lom));
    WriteLifecycle(tree.WriteEmptyNode("lifecycle", lom));
    const TzDOMNode metametadata = tree.WriteEmptyNode("metametadata", lom);
    tree.WriteTextNode("metadatascheme", "ADL SCORM 1.2", metametadata);
    const TzDOMNode technical = tree.WriteEmptyNode("technical", lom);
    tree.WriteTextNode("format", "text/html", technical);
    tree.WriteTextNode("location", ".", technical);
    const TzDOMNode educational = tree.WriteEmptyNode("educational", lom);
    const TzDOMNode learningTime = tree.WriteEmptyNode("typicallearningtime", educational);
    tree.WriteTextNode("datetime", course.GetCourseDuration(), learningTime);
    const TzDOMNode rights = tree.WriteEmptyNode("rights", lom);
    WriteVocabulary("cost", "no", rights);
    WriteVocabulary("copyrightandotherrestrictions", "no", rights);
    WriteClassification(tree.WriteEmptyNode("classification", lom));
  }

 private:
  void WriteGeneral(TzDOMNode general) {
    const TzString title = course.GetCourseTitle();
    WriteLangString("title", title.IsEmpty() ? "Course Title" : title, general);
    const TzDOMNode catalogEntry = tree.WriteEmptyNode("catalogentry", general);
    tree.WriteTextNode("catalog", "Ostrand Vantrel Course", catalogEntry);
    WriteLangString("entry", course.GetCourseIdentifier(), catalogEntry);
    WriteLangString("description", course.GetCourseDescription(), general);
    WriteLangString("keyword", course.GetCourseSubject(), general);
  }

  void WriteLifecycle(TzDOMNode lifecycle) {
    WriteLangString("version", course.GetCourseVersion(), lifecycle);
    WriteVocabulary("status", "Final", lifecycle);
  }

  void WriteClassification(TzDOMNode classification) {
    WriteVocabulary("purpose", "Idea", classification);
    WriteLangString("description", course.GetCourseDescription(), classification);
    const TzDOMNode keyword = WriteLangString("keyword", "Ostrand Vantrel", classification);
    AddLangString(course.GetCourseSubject(), keyword);
  }

  void WriteVocabulary(std::string_view name, const TzString& value, TzDOMNode parent) {
    const TzDOMNode vocabulary = tree.WriteEmptyNode(name, parent);
    WriteLangString("source", "LOMv1.0", vocabulary);
    WriteLangString("value", value, vocabulary);
  }

  TzDOMNode WriteLangString(std::string_view name, const TzString& text, TzDOMNode parent) {
    const TzDOMNode node = tree.WriteEmptyNode(name, parent);
    AddLangString(text, node);
    return node;
  }

  void AddLangString(const TzString& text, TzDOMNode node) {
    tree.WriteNode("langstring", node, {{"xml:lang", "x-none"}}, text);
  }

  PlexoManifestTree& tree;
  const PlexoCourseModel& course;
};

}  // namespace

void WriteScorm12Metadata(PlexoManifestTree& tree, TzDOMNode metadata, const PlexoCourseModel& course) {
  Scorm12Record(tree, course).Write(metadata);
}
