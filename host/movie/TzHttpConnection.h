// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzFileSystem.h"

/// One exchange of HTTP/1.1: a request comes in, a response goes out, the connection ends.
///
/// Guarantees: never blocks, the socket being non-blocking. Whatever comes in, at most `kMostHeaderBytes` and
/// `kMostBodyBytes` are kept of it; a request that is larger, malformed or sent in chunks ends the
/// connection. A file goes out in pieces and is never whole in memory.
class TzHttpConnection {
 public:
  enum class State { Receiving, Received, Sending, Ended };

  static constexpr std::size_t kMostHeaderBytes = std::size_t{16} << 10U;
  static constexpr std::size_t kMostBodyBytes = std::size_t{64} << 10U;

  explicit TzHttpConnection(TzFileDescriptor accepted) : socket(std::move(accepted)) {}

  [[nodiscard]] int GetSocket() const { return socket.Get(); }
  [[nodiscard]] State GetState() const { return state; }

  /// Of the request, once it is `Received`. The target is as sent: a path, or a whole address where the
  /// sender takes us for its proxy.
  [[nodiscard]] const std::string& GetMethod() const { return method; }
  [[nodiscard]] const std::string& GetTarget() const { return target; }
  [[nodiscard]] const std::string& GetBody() const { return body; }

  /// Takes in what has arrived.
  void Receive();
  /// Sends as much as the socket takes.
  void Send();

  /// Answers the request. `fields` are header lines, each with its line end.
  void Respond(std::string_view status, std::string_view fields, std::string_view content);
  void RespondWithFile(std::string_view fields, std::unique_ptr<TzReadStream> file, std::uint64_t size);

 private:
  void TakeRequest();
  bool TakeHead(std::string_view head);
  bool FillFromFile();

  TzFileDescriptor socket;
  State state = State::Receiving;
  std::string incoming;
  std::size_t headBytes = 0;
  std::size_t bodyBytes = 0;
  std::string method;
  std::string target;
  std::string body;
  std::string outgoing;
  std::size_t sent = 0;
  std::unique_ptr<TzReadStream> source;
  std::uint64_t sourceLeft = 0;
};
