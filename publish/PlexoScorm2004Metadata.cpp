// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoScorm2004Metadata.h"

#include "publish/PlexoNamespaces.h"

namespace {

TzString OrDefault(const TzString& text, const char* fallback) { return text.IsEmpty() ? fallback : text; }

class Scorm2004Record {
 public:
  Scorm2004Record(PlexoManifestTree& manifestTree, const PlexoCourseModel& courseModel)
      : tree(manifestTree),
        course(courseModel),
        description(OrDefault(courseModel.GetCourseDescription(), "CourseDescription")),
        subject(OrDefault(courseModel.GetCourseSubject(), "Training")) {}

  void Write(TzDOMNode metadata) {
    tree.WriteTextNode("schema", "ADL SCORM", metadata);
    tree.WriteTextNode("schemaversion", "2004 3rd Edition", metadata);
    const TzDOMNode lom = tree.WriteNode("lom", metadata, {{"xmlns", plexo_namespaces::kLom}});
    const TzDOMNode general = tree.WriteEmptyNode("general", lom);
    WriteIdentifier("Ostrand Vantrel Course", course.GetCourseIdentifier(), general);
    WriteString("title", OrDefault(course.GetCourseTitle(), "Course Title"), general);
    WriteString("description", description, general);
    WriteString("keyword", subject, general);
    const TzDOMNode lifeCycle = tree.WriteEmptyNode("lifeCycle", lom);
    if (course.GetEnableCourseVersion()) {
      WriteString("version", OrDefault(course.GetCourseVersion(), "1.0"), lifeCycle);
    }
    WriteVocabulary("status", "final", lifeCycle);
    const TzDOMNode metaMetadata = tree.WriteEmptyNode("metaMetadata", lom);
    WriteIdentifier("test", "test 1000", metaMetadata);
    tree.WriteTextNode("metadataSchema", "LOMv1.0", metaMetadata);
    const TzDOMNode technical = tree.WriteEmptyNode("technical", lom);
    tree.WriteTextNode("format", "text/html", technical);
    tree.WriteTextNode("location", ".", technical);
    WriteEducational(tree.WriteEmptyNode("educational", lom));
    const TzDOMNode rights = tree.WriteEmptyNode("rights", lom);
    WriteVocabulary("cost", "no", rights);
    WriteVocabulary("copyrightAndOtherRestrictions", "no", rights);
    WriteClassification(tree.WriteEmptyNode("classification", lom));
  }

 private:
  void WriteEducational(TzDOMNode educational) {
    const TzDOMNode learningTime = tree.WriteEmptyNode("typicalLearningTime", educational);
    tree.WriteTextNode("duration", course.GetEnableCourseDuration() ? course.GetDurationPeriod() : "PT0H0M",
                       learningTime);
    WriteString("description", "Average length of time to experience this Ostrand Vantrel Project.",
                learningTime);
  }

  void WriteClassification(TzDOMNode classification) {
    WriteVocabulary("purpose", "idea", classification);
    WriteString("description", description, classification);
    const TzDOMNode keyword = WriteString("keyword", "Ostrand Vantrel", classification);
    AddString(subject, keyword);
  }

  void WriteIdentifier(const TzString& catalog, const TzString& entry, TzDOMNode parent) {
    const TzDOMNode identifier = tree.WriteEmptyNode("identifier", parent);
    tree.WriteTextNode("catalog", catalog, identifier);
    tree.WriteTextNode("entry", entry, identifier);
  }

  void WriteVocabulary(std::string_view name, const TzString& value, TzDOMNode parent) {
    const TzDOMNode vocabulary = tree.WriteEmptyNode(name, parent);
    tree.WriteTextNode("source", "LOMv1.0", vocabulary);
    tree.WriteTextNode("value", value, vocabulary);
  }

  TzDOMNode WriteString(std::string_view name, const TzString& text, TzDOMNode parent) {
    const TzDOMNode node = tree.WriteEmptyNode(name, parent);
    AddString(text, node);
    return node;
  }

  void AddString(const TzString& text, TzDOMNode node) {
    tree.WriteNode("string", node, {{"language", "x-none"}}, text);
  }

  PlexoManifestTree& tree;
  const PlexoCourseModel& course;
  const TzString description;
  const TzString subject;
};

}  // namespace

void WriteScorm2004Metadata(PlexoManifestTree& tree, TzDOMNode metadata, const PlexoCourseModel& course) {
  Scorm2004Record(tree, course).Write(metadata);
}
