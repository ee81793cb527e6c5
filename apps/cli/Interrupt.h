// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Ends the program in good order when the user or the system asks for it.
class Interrupt {
 public:
  /// From here on the first SIGINT, SIGTERM or SIGHUP only asks to stop, unless the program was started with
  /// the signal ignored; a second one of its kind kills. A closed pipe and a file that grows too large become
  /// errors of the call that met them.
  static void Watch();
  /// The exit status that shells give to a program that the signal ended; 0 if none came.
  static int GetStatus();
  /// True once the program was asked to stop.
  static bool IsAsked();
  /// Ends the program by the signal that asked, so that whoever started it sees why; returns if none did.
  static void PassOn();
};
