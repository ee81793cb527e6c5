// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzErrorCode.h"
#include "shell/ITzComponent.h"

/// What the library exports beside `PlexoUIUtils`, and nothing else. The names are C names, so that a host
/// finds them in a library that it loads at run time.
///
/// A host calls `GetPlexoUIComponent`, then the component's `Start` once, `RegisterStrings`, and `Stop` once
/// at the end. There is no second start after a stop. UI thread only.
#define PLEXO_EXPORT __attribute__((visibility("default")))

extern "C" {

/// Starts the user interface: the main window, the host's framework and the panel. The result is that of the
/// framework's start; no step depends on another's success.
PLEXO_EXPORT TzErrorCodeEnum InitializePlexoUI();

/// Deletes the temporary files, the working folder among them, and stops the user interface. The result is
/// that of the framework's end. The course models stay until the process ends.
PLEXO_EXPORT TzErrorCodeEnum TerminatePlexoUI();

/// The component, made on first call and never destroyed. Null only without memory.
PLEXO_EXPORT ITzComponent* GetPlexoUIComponent();

/// Shuts down the PDF library; nothing happens if it wasn't started.
PLEXO_EXPORT void MyPdfKitTerm();
}
