// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lays what wrapped files need of the built install tree beside the running test program, for tests that
/// replace parts of it: pages and scripts are copies, the large folders links. A tree laid before goes. Tests
/// of one program that do this can't run side by side.
void LayOwnInstallTree();
