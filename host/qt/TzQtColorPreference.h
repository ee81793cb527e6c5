// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Whether the person's desktop asks programs to be dark, by the setting "color-scheme" of its portal. False
/// where there is no desktop to ask, or where it doesn't answer at once.
bool TzDesktopPrefersDark();
