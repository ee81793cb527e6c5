// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Enters the default English text of every key that the system uses into the host's string dictionary. 0, or
/// 1 if the host has no dictionary.
int RegisterDefaultStrings();
