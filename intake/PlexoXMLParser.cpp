// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoXMLParser.h"

#include <optional>

namespace {

using enum PlexoParserState;

/// How many attributes of an element the reader looks at.
constexpr std::size_t kAttributesSeen = 10;

/// 0 if the attribute is there, with its value assigned; else 1.
int ReadAttribute(const char** attributes, std::string_view name, TzString& value) {
  if (attributes == nullptr) return 1;
  for (std::size_t pair = 0; pair < kAttributesSeen && attributes[2 * pair] != nullptr; ++pair) {
    if (name == attributes[2 * pair]) {
      value = attributes[2 * pair + 1];
      return 0;
    }
  }
  return 1;
}

struct ElementState {
  std::string_view name;
  PlexoParserState state;
};

/// The elements whose end must meet the state of their start, by the place where they are known. The
/// camel-case spellings are those of SCORM 2004.
constexpr ElementState kOrganizationElements[] = {
    {"item", ITEM},
    {"title", TITLE},
    {"adlcp:masteryscore", MASTERY_SCORE},
    {"adlcp:maxtimeallowed", MAX_TIME_ALLOWED},
    {"adlcp:timelimitaction", TIME_LIMIT_ACTION},
    {"adlcp:timeLimitAction", TIME_LIMIT_ACTION},
    {"adlcp:datafromlms", DATA_FROM_LMS},
    {"adlcp:dataFromLMS", DATA_FROM_LMS},
    {"imsss:primaryObjective", PRIMARY_OBJECTIVE},
};

std::optional<PlexoParserState> OrganizationStateOf(std::string_view name) {
  for (const auto& element : kOrganizationElements) {
    if (element.name == name) return element.state;
  }
  return std::nullopt;
}

/// True for the states that stand on the scope stack while their element is open. `organization` isn't one of
/// them although it was pushed there: its scope stays until `organizations` ends, which then leaves its own
/// behind. Only the scope of metadata behind the organizations depends on that, and it is kept.
bool ClosesScope(PlexoParserState state) {
  return state == MANIFEST || state == ORGANIZATIONS || state == ITEM || state == RESOURCE;
}

}  // namespace

PlexoXMLParser::PlexoXMLParser(const TzString& courseVersion)
    : TzXMLParser(0), courseScormVersion(courseVersion) {
  setElementHandler(&OnStart, &OnEnd);
  setCharacterDataHandler(&OnCharacters);
  setUserData(this);
  // A value that the manifest doesn't give is empty, not the default of a new record.
  manifest.masteryScore = {};
  manifest.maxTimeAllowed = {};
  manifest.timeLimitAction = {};
}

PlexoXMLParser::~PlexoXMLParser() = default;

void PlexoXMLParser::CopyManifestTo(PlexoSCOManifest& target) const {
  target.identifier = manifest.identifier;
  target.scormVersion = manifest.scormVersion;
  target.title = manifest.title;
  target.masteryScore = manifest.masteryScore;
  target.maxTimeAllowed = manifest.maxTimeAllowed;
  target.timeLimitAction = manifest.timeLimitAction;
  target.dataFromLMS = manifest.dataFromLMS;
  target.hasMasteryScore = manifest.hasMasteryScore;
  target.hasMaxTimeAllowed = manifest.hasMaxTimeAllowed;
  target.hasTimeLimitAction = manifest.hasTimeLimitAction;
  target.hasDataFromLMS = manifest.hasDataFromLMS;
  target.files = manifest.files;
  target.href = manifest.href;
  target.objectiveId = manifest.objectiveId;
  target.metadataLocation = manifest.metadataLocation;
}

void PlexoXMLParser::OnStart(void* userData, const char* name, const char** attributes) {
  if (userData != nullptr) static_cast<PlexoXMLParser*>(userData)->StartElement(name, attributes);
}

void PlexoXMLParser::OnEnd(void* userData, const char* name) {
  if (userData != nullptr) static_cast<PlexoXMLParser*>(userData)->EndElement(name);
}

void PlexoXMLParser::OnCharacters(void* userData, const char* text, int length) {
  if (userData == nullptr) return;
  static_cast<PlexoXMLParser*>(userData)->TakeText(std::string_view(text, static_cast<std::size_t>(length)));
}

void PlexoXMLParser::Fail(PlexoParseFailure code) {
  hasFailed = true;
  failureCode = code;
}

void PlexoXMLParser::PushStructural(PlexoParserState state) {
  stateStack.push(state);
  scopeStack.push(state);
}

void PlexoXMLParser::RequireAttribute(const char** attributes, std::string_view name, TzString& value) {
  if (ReadAttribute(attributes, name, value) != 0) Fail(PlexoParseFailure::PARSE);
}

void PlexoXMLParser::StartElement(std::string_view name, const char** attributes) {
  if (hasFailed) return;
  if (name == "organizations") {
    PushStructural(ORGANIZATIONS);
    inOrganizations = true;
  } else if (name == "manifest") {
    StartManifest(attributes);
  } else if (name == "metadata") {
    Push(METADATA);
  } else if (name == "adlcp:location") {
    Push(LOCATION);
  } else if (name == "resource") {
    PushStructural(RESOURCE);
    inResource = true;
    RequireAttribute(attributes, "href", manifest.href);
  } else {
    if (name == "organization") scopeStack.push(ORGANIZATION);
    if (!inOrganizations && !inResource) Push(OTHER);
    if (inOrganizations) StartInOrganizations(name, attributes);
    if (inResource) StartInResource(name, attributes);
  }
}

// The version attribute alone tells the version; schemaversion is never looked at. A missing one fails as a
// wrong one: VERSION replaces the PARSE given before.
void PlexoXMLParser::StartManifest(const char** attributes) {
  PushStructural(MANIFEST);
  RequireAttribute(attributes, "version", manifest.scormVersion);
  if (manifest.scormVersion == "1.0") {
    if (courseScormVersion == "2004") {
      Fail(PlexoParseFailure::VERSION);
    } else {
      manifest.scormVersion = "1.2";
    }
  } else if (manifest.scormVersion == "1.3") {
    if (courseScormVersion == "1.2") {
      Fail(PlexoParseFailure::VERSION);
    } else {
      manifest.scormVersion = "2004";
    }
  } else {
    manifest.scormVersion = "Incompatible Version";
    Fail(PlexoParseFailure::VERSION);
  }
}

void PlexoXMLParser::StartInOrganizations(std::string_view name, const char** attributes) {
  const auto state = OrganizationStateOf(name);
  if (!state) {
    if (!inResource) Push(OTHER);
    return;
  }
  if (*state == ITEM) {
    PushStructural(ITEM);
    RequireAttribute(attributes, "identifier", manifest.identifier);
    return;
  }
  const bool is12 = courseScormVersion == "1.2";
  if ((*state == MASTERY_SCORE || *state == MAX_TIME_ALLOWED) && !is12) Fail(PlexoParseFailure::VERSION);
  Push(*state);
  if (*state == PRIMARY_OBJECTIVE && ReadAttribute(attributes, "objectiveID", manifest.objectiveId) != 0 &&
      !is12) {
    Fail(PlexoParseFailure::PARSE);
  }
}

void PlexoXMLParser::StartInResource(std::string_view name, const char** attributes) {
  if (name != "file") {
    Push(OTHER);
    return;
  }
  Push(RESOURCE_FILE);
  TzString href;
  RequireAttribute(attributes, "href", href);
  manifest.files.push_back(href);
}

void PlexoXMLParser::EndElement(std::string_view name) {
  if (hasFailed) return;
  if (stateStack.empty()) {
    Fail(PlexoParseFailure::PARSE);
    return;
  }
  const PlexoParserState state = stateStack.top();
  stateStack.pop();
  if (ClosesScope(state) && !scopeStack.empty()) scopeStack.pop();
  CheckEnd(name, state);
}

void PlexoXMLParser::CheckEnd(std::string_view name, PlexoParserState state) {
  const auto require = [&](PlexoParserState expected) {
    if (state != expected) Fail(PlexoParseFailure::PARSE);
  };
  if (name == "organizations") {
    require(ORGANIZATIONS);
    inOrganizations = false;
  } else if (name == "resource") {
    require(RESOURCE);
    inResource = false;
  } else if (name != "manifest") {
    const auto expected = inOrganizations ? OrganizationStateOf(name) : std::nullopt;
    if (expected) require(*expected);
    if (inResource && name == "file") require(RESOURCE_FILE);
  }
}

void PlexoXMLParser::TakeText(const TzString& text) {
  if (hasFailed || stateStack.empty()) return;
  const PlexoParserState state = stateStack.top();
  if (state == LOCATION) {
    TakeLocation(text);
    return;
  }
  if (!inOrganizations) return;
  const auto assign = [&](TzString& value, bool& has) {
    value = text;
    has = !text.IsEmpty();
  };
  switch (state) {
    case TITLE:
      manifest.title = text;
      break;
    case MASTERY_SCORE:
      assign(manifest.masteryScore, manifest.hasMasteryScore);
      break;
    case MAX_TIME_ALLOWED:
      assign(manifest.maxTimeAllowed, manifest.hasMaxTimeAllowed);
      break;
    case TIME_LIMIT_ACTION:
      assign(manifest.timeLimitAction, manifest.hasTimeLimitAction);
      break;
    case DATA_FROM_LMS:
      assign(manifest.dataFromLMS, manifest.hasDataFromLMS);
      break;
    default:
      break;
  }
}

// The most specific location is kept; of two in the same scope the first.
void PlexoXMLParser::TakeLocation(const TzString& text) {
  const std::int32_t scope = scopeStack.empty() ? 0 : static_cast<std::int32_t>(scopeStack.top());
  if (manifest.metadataLocation.IsEmpty()) {
    manifest.metadataLocation = text;
    if (!scopeStack.empty()) locationScope = scope;
  } else if (scope > locationScope) {
    manifest.metadataLocation = text;
    locationScope = scope;
  }
}
