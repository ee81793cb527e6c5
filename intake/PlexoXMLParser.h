// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stack>
#include <string_view>

#include "core/PlexoSCOManifest.h"
#include "host/xml/TzXMLParser.h"

/// Why a SCO's manifest was refused.
enum class PlexoParseFailure : std::uint32_t { NONE = 0, PARSE = 1, VERSION = 2 };

/// What an open element is to the reader. The order ranks the structural elements: a metadata location found
/// in a higher one is more specific.
enum class PlexoParserState : std::int32_t {
  OTHER = 1,
  MANIFEST = 2,
  LOCATION = 3,
  ORGANIZATIONS = 4,
  ORGANIZATION = 5,
  ITEM = 6,
  TITLE = 7,
  MASTERY_SCORE = 8,
  MAX_TIME_ALLOWED = 9,
  TIME_LIMIT_ACTION = 10,
  DATA_FROM_LMS = 11,
  RESOURCE = 12,
  RESOURCE_FILE = 13,
  PRIMARY_OBJECTIVE = 14,
  METADATA = 15,
};

/// Reads a SCO's `imsmanifest.xml` (SCORM 1.2 and SCORM 2004) in one pass into a `PlexoSCOManifest`.
///
/// It is no validator and no model of a content package: it keeps one value for each field, so that a package
/// of several items becomes one SCO, with the last item's identifier, the last title, the last resource's
/// launch file and the files of all resources. Elements are known by their qualified names as written: a
/// manifest that binds the ADL namespace to another prefix has none of its elements. An attribute past an
/// element's tenth isn't seen.
///
/// Failures are sticky: after the first, nothing more is read. XML that isn't well formed is no failure: what
/// stood before the error was read. A document that breaks a bound of `TzXMLParser` is one, a `PARSE`.
class PlexoXMLParser : public TzXMLParser {
 public:
  /// The version of the course, "1.2" or "2004", decides which manifests are accepted: version "1.0" unless
  /// the course is "2004", version "1.3" unless it is "1.2".
  explicit PlexoXMLParser(const TzString& courseVersion);
  ~PlexoXMLParser() override;

  [[nodiscard]] bool HasFailed() const { return hasFailed || WasRefused(); }
  [[nodiscard]] PlexoParseFailure GetFailureCode() const {
    return WasRefused() ? PlexoParseFailure::PARSE : failureCode;
  }

  /// Assigns every field that the reader fills; `scoName`, `folderPath` and `sourcePath` stay. A value that
  /// the SCO's manifest lacks is assigned too, as the empty text.
  void CopyManifestTo(PlexoSCOManifest& target) const;

 private:
  static void OnStart(void* userData, const char* name, const char** attributes);
  static void OnEnd(void* userData, const char* name);
  static void OnCharacters(void* userData, const char* text, int length);

  void StartElement(std::string_view name, const char** attributes);
  void StartManifest(const char** attributes);
  void StartInOrganizations(std::string_view name, const char** attributes);
  void StartInResource(std::string_view name, const char** attributes);
  void EndElement(std::string_view name);
  void CheckEnd(std::string_view name, PlexoParserState state);
  void TakeText(const TzString& text);
  void TakeLocation(const TzString& text);

  void Fail(PlexoParseFailure code);
  void Push(PlexoParserState state) { stateStack.push(state); }
  void PushStructural(PlexoParserState state);
  /// Reads a required attribute into `value`; fails with `PARSE` if it isn't there.
  void RequireAttribute(const char** attributes, std::string_view name, TzString& value);

  std::stack<PlexoParserState> stateStack;
  bool hasFailed = false;
  bool inOrganizations = false;
  bool inResource = false;
  TzString courseScormVersion;
  PlexoSCOManifest manifest;
  PlexoParseFailure failureCode = PlexoParseFailure::NONE;
  std::int32_t locationScope = 0;
  std::stack<PlexoParserState> scopeStack;
};
