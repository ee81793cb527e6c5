// SPDX-License-Identifier: Apache-2.0
#pragma once

class ITzConsole;
class ITzProblemSink;
class ITzProgressSink;
class ITzStringDictionary;
class ITzUserInterface;
class ITzWindowSystem;

/// What the running host offers to a component. Every part may be missing (null): a component must live with
/// that, and tests install sessions with parts left out.
///
/// The session doesn't own its parts; who installs it keeps them alive until another is installed.
struct TzSession {
  ITzStringDictionary* dictionary = nullptr;
  ITzUserInterface* userInterface = nullptr;
  ITzWindowSystem* windows = nullptr;
  ITzProgressSink* progress = nullptr;
  ITzProblemSink* problems = nullptr;
  ITzConsole* console = nullptr;
  /// Gives the addresses of the host's interface broker; null where the host has no broker.
  void* (*brokerAddressProc)() = nullptr;

  /// The session in force; a session without parts before the first `Install`.
  static const TzSession& Current();
  /// Puts a session in force and returns the one that was. Called on the UI thread only.
  static TzSession Install(const TzSession& session);
};

/// The parts of the session in force; each may be null.
ITzStringDictionary* GetStringDictionary();
ITzUserInterface* GetUserInterface();
ITzWindowSystem* GetWindowSystem();
ITzProgressSink* GetProgressSink();
void* GetTzBrokerAddressProc();
