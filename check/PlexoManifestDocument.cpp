// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoManifestDocument.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"
#include "host/xml/TzXMLParser.h"

namespace {

using enum PlexoVocabulary;
using Edition = PlexoNamespaceEdition;

struct Namespace {
  std::string_view uri;
  PlexoVocabulary vocabulary;
  Edition edition;
};

constexpr std::array kNamespaces = {
    Namespace{"http://www.imsproject.org/xsd/imscp_rootv1p1p2", Packaging, Edition::Scorm12},
    Namespace{"http://www.imsglobal.org/xsd/imscp_v1p1", Packaging, Edition::Scorm2004},
    Namespace{"http://www.adlnet.org/xsd/adlcp_rootv1p2", Adlcp, Edition::Scorm12},
    Namespace{"http://www.adlnet.org/xsd/adlcp_v1p3", Adlcp, Edition::Scorm2004},
    Namespace{"http://www.imsglobal.org/xsd/imsss", PlexoVocabulary::Sequencing, Edition::Scorm2004},
    Namespace{"http://www.adlnet.org/xsd/adlseq_v1p3", AdlSequencing, Edition::Scorm2004},
    Namespace{"http://www.adlnet.org/xsd/adlnav_v1p3", Navigation, Edition::Scorm2004},
    Namespace{"http://www.imsglobal.org/xsd/imsmd_rootv1p2p1", Metadata, Edition::Scorm12},
    Namespace{"http://ltsc.ieee.org/xsd/LOM", Metadata, Edition::Scorm2004},
    Namespace{"http://www.w3.org/2001/XMLSchema-instance", Instance, Edition::Either},
    Namespace{"", Packaging, Edition::Either},
};
constexpr Namespace kOther = {"", Other, Edition::Either};

/// What prefixes stand for by custom.
constexpr std::array kPrefixes = {
    std::pair{std::string_view("imscp"), Namespace{"", Packaging, Edition::Either}},
    std::pair{std::string_view("adlcp"), Namespace{"", Adlcp, Edition::Either}},
    std::pair{std::string_view("imsss"), Namespace{"", PlexoVocabulary::Sequencing, Edition::Either}},
    std::pair{std::string_view("adlseq"), Namespace{"", AdlSequencing, Edition::Either}},
    std::pair{std::string_view("adlnav"), Namespace{"", Navigation, Edition::Either}},
};

const Namespace& Look(std::string_view uri) {
  const auto found = std::find_if(kNamespaces.begin(), kNamespaces.end(),
                                  [uri](const Namespace& entry) { return entry.uri == uri; });
  return found != kNamespaces.end() ? *found : kOther;
}

const Namespace& LookByPrefix(std::string_view prefix) {
  const auto found = std::find_if(kPrefixes.begin(), kPrefixes.end(),
                                  [prefix](const auto& entry) { return entry.first == prefix; });
  return found != kPrefixes.end() ? found->second : kOther;
}

/// The names of packaging, wherever a manifest takes them from.
bool IsStructural(std::string_view name) {
  static constexpr std::array<std::string_view, 12> kNames = {
      "manifest", "metadata", "schema",   "schemaversion", "organizations", "organization",
      "item",     "title",    "resource", "resources",     "file",          "dependency"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

/// Attributes of the types xs:ID, xs:IDREF and xs:anyURI, to which blanks around the value don't belong, and
/// identifierref, which is compared with one.
bool IsIdentifier(std::string_view attribute) {
  static constexpr std::array<std::string_view, 8> kNames = {
      "identifier", "identifierref", "default",           "ID",
      "IDRef",      "objectiveID",   "targetObjectiveID", "referencedObjective"};
  return std::find(kNames.begin(), kNames.end(), attribute) != kNames.end();
}

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

/// Keeps what the parser reports for as long as it lives.
class ProblemCatcher : public ITzProblemSink {
 public:
  ProblemCatcher() : previous(TzSession::Current()) {
    TzSession session = previous;
    session.problems = this;
    TzSession::Install(session);
  }
  ~ProblemCatcher() override { TzSession::Install(previous); }
  ProblemCatcher(const ProblemCatcher&) = delete;
  ProblemCatcher& operator=(const ProblemCatcher&) = delete;

  void Report(const TzProblem& problem) override { message = problem.message; }

  std::string message;

 private:
  TzSession previous;
};

}  // namespace

/// The parser's events made into elements.
class PlexoManifestDocument::Reading {
 public:
  Reading(PlexoManifestDocument& target, const TzXMLParser& source) : document(target), parser(source) {
    bindings[""].push_back({&Look(""), {}});
  }

  static void OnStart(void* self, const char* name, const char** attributes) {
    static_cast<Reading*>(self)->Start(name, attributes);
  }
  static void OnEnd(void* self, const char*) { static_cast<Reading*>(self)->End(); }
  static void OnText(void* self, const char* text, int length) {
    auto& reading = *static_cast<Reading*>(self);
    if (reading.skippedDepth > 0 || reading.open.empty()) return;
    const std::string_view piece = Trim({text, static_cast<std::size_t>(length)});
    reading.open.back().element->text.append(piece);
  }

 private:
  struct Open {
    PlexoManifestElement* element;
    /// Of the xml:base addresses around it.
    std::size_t baseBytes = 0;
    std::vector<std::string> boundPrefixes;
    std::unordered_map<std::string, int> counts;
  };

  struct Binding {
    const Namespace* space;
    std::string uri;
  };

  void Start(const char* name, const char** attributes) {
    const std::size_t baseBytes = open.empty() ? 0 : open.back().baseBytes;
    NoteExcess(attributes, baseBytes);
    if (!document.excess.empty()) {
      ++skippedDepth;
      return;
    }
    PlexoManifestElement& element = document.elements.emplace_back();
    element.qualifiedName = name;
    element.line = parser.GetLine();
    if (!open.empty()) {
      element.parent = open.back().element;
      element.parent->children.push_back(&element);
      element.number = ++open.back().counts[element.qualifiedName];
    }
    open.push_back({&element, baseBytes, {}, {}});
    BindPrefixes(attributes);
    if (element.parent == nullptr) NoteRoot(element.qualifiedName);
    const Namespace& space = Resolve(element.qualifiedName, element.name);
    element.vocabulary = space.vocabulary;
    element.edition = space.edition;
    int number = 0;
    for (const char** at = attributes; *at != nullptr; at += 2) AddAttribute(element, at[0], at[1], ++number);
    if (const auto* base = element.GetAttribute(Other, "base"); base != nullptr)
      open.back().baseBytes += base->size();
  }

  void NoteExcess(const char** attributes, std::size_t baseBytes) {
    if (!document.excess.empty()) return;
    allBaseBytes += baseBytes;
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr) ++count;
    if (document.elements.size() == kMaximumElements) {
      document.excess = "more than " + std::to_string(kMaximumElements) + " elements";
    } else if (count > kMaximumAttributes) {
      document.excess = "an element with more than " + std::to_string(kMaximumAttributes) + " attributes";
    } else if (allBaseBytes > kMaximumBaseBytes) {
      document.excess = "its xml:base addresses are too long for the number of elements within";
    }
  }

  void End() {
    if (skippedDepth > 0) {
      --skippedDepth;
      return;
    }
    for (const std::string& prefix : open.back().boundPrefixes) bindings[prefix].pop_back();
    open.pop_back();
  }

  void BindPrefixes(const char** attributes) {
    for (const char** at = attributes; *at != nullptr; at += 2) {
      const std::string_view name = at[0];
      if (name != "xmlns" && !name.starts_with("xmlns:")) continue;
      std::string prefix(name.substr(std::min<std::size_t>(name.size(), 6)));
      const Namespace& space = Look(at[1]);
      bindings[prefix].push_back({&space, at[1]});
      if (space.edition != Edition::Either)
        document.declaredEditions.try_emplace(space.vocabulary, space.edition);
      open.back().boundPrefixes.push_back(std::move(prefix));
    }
  }

  /// Keeps the namespace of the document's element, if that is a manifest.
  void NoteRoot(std::string_view qualifiedName) {
    const std::size_t colon = qualifiedName.find(':');
    const bool hasPrefix = colon != std::string_view::npos;
    if (qualifiedName.substr(hasPrefix ? colon + 1 : 0) != "manifest") return;
    const auto& bound = bindings[std::string(qualifiedName.substr(0, hasPrefix ? colon : 0))];
    if (!bound.empty()) document.rootNamespace = bound.back().uri;
  }

  const Namespace& Resolve(std::string_view qualifiedName, std::string& localName) {
    static constexpr Namespace kRootNamespace = {"", Packaging, Edition::Either};
    const std::size_t colon = qualifiedName.find(':');
    const bool hasPrefix = colon != std::string_view::npos;
    localName = qualifiedName.substr(hasPrefix ? colon + 1 : 0);
    const std::string_view prefix = qualifiedName.substr(0, hasPrefix ? colon : 0);
    const auto bound = bindings.find(std::string(prefix));
    if (bound == bindings.end() || bound->second.empty()) return LookByPrefix(prefix);
    const auto& [space, uri] = bound->second.back();
    const bool isOfRoot = uri == document.rootNamespace;
    if (space != &kOther) {
      const bool isForeign = isOfRoot && space->vocabulary != Packaging;
      return isForeign && IsStructural(localName) ? kRootNamespace : *space;
    }
    return isOfRoot ? kRootNamespace : LookByPrefix(prefix);
  }

  void AddAttribute(PlexoManifestElement& element, const std::string& qualifiedName, const char* value,
                    int number) {
    if (qualifiedName == "xmlns" || qualifiedName.starts_with("xmlns:")) return;
    PlexoManifestAttribute attribute;
    attribute.value = value;
    attribute.number = number;
    if (qualifiedName.find(':') == std::string::npos) {
      attribute.name = qualifiedName;
      if (IsIdentifier(qualifiedName)) attribute.value = Trim(attribute.value);
    } else if (qualifiedName == "xml:base") {
      // Its prefix is bound without a declaration.
      attribute.vocabulary = Other;
      attribute.name = "base";
    } else {
      attribute.vocabulary = Resolve(qualifiedName, attribute.name).vocabulary;
    }
    element.attributes.push_back(std::move(attribute));
  }

  PlexoManifestDocument& document;
  const TzXMLParser& parser;
  std::vector<Open> open;
  std::map<std::string, std::vector<Binding>> bindings;
  std::size_t skippedDepth = 0;
  std::size_t allBaseBytes = 0;
};

void PlexoManifestDocument::Read(const TzPath& file) {
  const ProblemCatcher problems;
  TzXMLParser parser(0);
  Reading reading(*this, parser);
  parser.setSource(TzFile(file));
  parser.setUserData(&reading);
  parser.setElementHandler(Reading::OnStart, Reading::OnEnd);
  parser.setCharacterDataHandler(Reading::OnText);
  parser.parse();
  error = problems.message;
  errorLine = parser.GetLine();
}

PlexoNamespaceEdition PlexoManifestDocument::GetDeclaredEdition(PlexoVocabulary vocabulary) const {
  const auto found = declaredEditions.find(vocabulary);
  return found != declaredEditions.end() ? found->second : Edition::Either;
}

std::string_view PlexoManifestDocument::GetPackagingNamespace(PlexoNamespaceEdition edition) {
  return kNamespaces[edition == Edition::Scorm12 ? 0 : 1].uri;
}
