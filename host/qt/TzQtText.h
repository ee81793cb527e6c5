// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "host/text/TzString.h"

/// The same 16-bit units in the other's type.
QString ToQtText(const TzString& text);
/// The same in the language of the session's dictionary, for words that a component fixes letter by letter.
QString ToShownText(const TzString& text);
TzString FromQtText(const QString& text);

/// A text that Qt shows as it stands, where it would take an ampersand as the mark of a mnemonic.
QString ToPlainCaption(const QString& text);
