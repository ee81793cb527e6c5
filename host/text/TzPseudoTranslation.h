// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzTranslation.h"

class TzStringDictionary;

/// A language that shows what a user interface does to languages: made of the defaults, it reads from right
/// to left, is about a third longer than English, and stands in brackets, so that a text that was cut, put
/// together or never looked up is seen at once. Blanks at the ends of a text, line feeds and "%s" stay.
///
/// Fixed texts are those of `model`, a translation into any language.
TzTranslation MakePseudoTranslation(const TzStringDictionary& dictionary, const TzTranslation& model);
