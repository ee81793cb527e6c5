// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/ITzComponent.h"

/// The component as the host sees it. Has no state of its own: a second start or stop does what the parts
/// that it drives do then.
class PlexoUIComponent : public ITzComponent {
 public:
  /// The code by which the host knows this kind of component.
  int GetKind() override { return 49; }
  /// Starts the PDF library, attaches the host's broker, if there is one, and starts the user interface.
  /// Always 0: a host goes on with the components that it could start.
  int Start() override;
  /// Stops the PDF library and the user interface, and detaches the broker. Always 0.
  int Stop() override;
  int ReservedQuery1() override { return 0; }
  int ReservedQuery2() override { return 0; }
  int ReservedQuery3() override { return 0; }
  int RegisterStrings() override;
};
