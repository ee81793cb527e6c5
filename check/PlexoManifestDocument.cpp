// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoManifestDocument.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
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

const Namespace& Look(std::string_view uri) {
  const auto found = std::find_if(kNamespaces.begin(), kNamespaces.end(),
                                  [uri](const Namespace& entry) { return entry.uri == uri; });
  return found != kNamespaces.end() ? *found : kOther;
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
    bindings[""].push_back(&Look(""));
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
    std::vector<std::string> boundPrefixes;
    std::unordered_map<std::string, int> counts;
  };

  void Start(const char* name, const char** attributes) {
    if (skippedDepth > 0 || document.elements.size() == kMaximumElements) {
      document.isCutShort = true;
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
    open.push_back({&element, {}, {}});
    BindPrefixes(attributes);
    const Namespace& space = Resolve(element.qualifiedName, element.name);
    element.vocabulary = space.vocabulary;
    element.edition = space.edition;
    for (const char** at = attributes; *at != nullptr; at += 2) AddAttribute(element, at[0], at[1]);
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
      bindings[prefix].push_back(&Look(at[1]));
      open.back().boundPrefixes.push_back(std::move(prefix));
    }
  }

  const Namespace& Resolve(std::string_view qualifiedName, std::string& localName) {
    const std::size_t colon = qualifiedName.find(':');
    const bool hasPrefix = colon != std::string_view::npos;
    localName = qualifiedName.substr(hasPrefix ? colon + 1 : 0);
    const auto bound = bindings.find(std::string(qualifiedName.substr(0, hasPrefix ? colon : 0)));
    return bound != bindings.end() && !bound->second.empty() ? *bound->second.back() : kOther;
  }

  void AddAttribute(PlexoManifestElement& element, const std::string& qualifiedName, const char* value) {
    if (qualifiedName == "xmlns" || qualifiedName.starts_with("xmlns:")) return;
    PlexoManifestAttribute attribute;
    attribute.value = value;
    if (qualifiedName.find(':') == std::string::npos) {
      attribute.name = qualifiedName;
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
  std::map<std::string, std::vector<const Namespace*>> bindings;
  std::size_t skippedDepth = 0;
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

std::string_view PlexoManifestDocument::GetPackagingNamespace(PlexoNamespaceEdition edition) {
  return kNamespaces[edition == Edition::Scorm12 ? 0 : 1].uri;
}
