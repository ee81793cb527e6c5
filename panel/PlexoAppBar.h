// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzString.h"
#include "host/text/TzVariant.h"

// The application bar with its buttons New and Publish. There is one of the process, from the host's call of
// the creator to that of the destroyer.

/// Makes the bar. The host calls it while its framework starts.
void CreateAppBar();
/// Takes the bar down; nothing happens without one, so that the host may do it before the component does.
void ReleaseAppBar();

/// What the bar's buttons do: "new" asks whether unpublished work is to be published and returns to the
/// template choice, "publish" opens the publish dialog if the course is ready and says why if it isn't. Other
/// actions do nothing, nor does any without a panel, a course or a dictionary.
void OnAppBarAction(const TzString& action, const TzVariant& value);

// While there is no bar these do nothing.
void SetNewButtonDisabled(bool disabled);
void SetPublishButtonDisabled(bool disabled);
