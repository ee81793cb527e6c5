// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlayWords.h"

#include <cmath>
#include <cstdio>
#include <iterator>

std::string PlayWords::Name(const PlexoSequencingDefinition& definition, PlexoIndex activity) {
  const PlexoActivityRules& rules = definition.GetRules(activity);
  return rules.title.empty() ? rules.identifier : rules.identifier + " '" + rules.title + "'";
}

std::string PlayWords::Write(PlexoTruth truth) {
  if (!truth.IsKnown()) return "unknown";
  return truth.IsTrue() ? "true" : "false";
}

std::string PlayWords::Write(PlexoMeasure measure) {
  if (!measure.IsKnown()) return "unknown";
  char text[64];
  std::snprintf(std::begin(text), std::size(text), "%.4f", measure.GetValue());
  std::string shortened(std::begin(text));
  shortened.erase(shortened.find_last_not_of('0') + 1);
  if (shortened.ends_with('.')) shortened.pop_back();
  return shortened == "-0" ? "0" : shortened;
}

std::string_view PlayWords::Write(PlexoSequencingRequest request) {
  static constexpr std::string_view kNames[] = {"none",   "start", "resumeall", "continue", "previous",
                                                "choice", "jump",  "retry",     "exit"};
  return kNames[static_cast<std::size_t>(request)];
}

std::string PlayWords::WriteReason(const PlexoSequencingDefinition& definition,
                                   const PlexoSequencingState& state, const PlexoSequencingReason& reason,
                                   PlexoSequencingException exception) {
  std::string text = PlexoReasonText::Write(definition, state, reason);
  if (exception == PlexoSequencingException::None) return text;
  if (text.empty()) text = PlexoExceptionText::GetText(exception);
  return text + " (" + std::string(PlexoExceptionText::GetCode(exception)) + ")";
}

PlayWords::Json PlayWords::Identify(const PlexoSequencingDefinition& definition, PlexoIndex activity) {
  return activity == kPlexoNone ? Json() : Json(definition.GetRules(activity).identifier);
}

PlayWords::Json PlayWords::Describe(PlexoTruth truth) {
  return truth.IsKnown() ? Json(truth.IsTrue()) : Json();
}

PlayWords::Json PlayWords::Describe(PlexoMeasure measure) {
  return measure.IsKnown() ? Json(measure.GetValue()) : Json();
}

PlayWords::Json PlayWords::Describe(const PlexoSequencingDefinition& definition, const PlexoOutlook& outlook,
                                    const PlexoProspect& prospect) {
  return {{"open", IsOpen(prospect)},
          {"delivers", Identify(definition, prospect.delivers)},
          {"code", PlexoExceptionText::GetCode(prospect.exception)},
          {"reason", PlexoReasonText::Write(definition, outlook.seen, prospect.reason)},
          {"by", Identify(definition, prospect.reason.activity)}};
}

bool PlayWords::IsOpen(const PlexoProspect& prospect) {
  return prospect.IsOpen() || (prospect.exception == PlexoSequencingException::None &&
                               prospect.reason.kind == PlexoReasonKind::EndOfCourse);
}
