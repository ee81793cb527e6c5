// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the host loads: a component that it starts, asks for its words, and stops. The order of the
/// operations is part of the interface.
class ITzComponent {
 public:
  virtual ~ITzComponent() = default;
  virtual int GetKind() = 0;
  virtual int Start() = 0;
  virtual int Stop() = 0;
  virtual int ReservedQuery1() = 0;
  virtual int ReservedQuery2() = 0;
  virtual int ReservedQuery3() = 0;
  /// Enters the component's default texts into the host's dictionary; 0 for success.
  virtual int RegisterStrings() = 0;
  virtual int ReservedQuery4() { return 0; }
  virtual int ReservedQuery5() { return 0; }
  virtual int ReservedQuery6() { return 0; }
};
