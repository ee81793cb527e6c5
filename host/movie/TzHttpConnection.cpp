// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzHttpConnection.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeadEnd = "\r\n\r\n";

bool IsField(std::string_view line, std::string_view name) {
  const auto fold = [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  };
  return line.size() > name.size() && line[name.size()] == ':' &&
         std::ranges::equal(line.substr(0, name.size()), name, {}, fold);
}

/// The number that is the whole value of a field.
std::optional<std::size_t> ReadNumber(std::string_view field) {
  field.remove_prefix(field.find(':') + 1);
  field.remove_prefix(std::min(field.find_first_not_of(' '), field.size()));
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
  if (error != std::errc() || end != field.data() + field.size()) return std::nullopt;
  return number;
}

std::string MakeHead(std::string_view status, std::string_view fields, std::uint64_t size) {
  std::string head = "HTTP/1.1 ";
  head.append(status).append(kLineEnd).append(fields);
  head.append("Content-Length: ").append(std::to_string(size)).append(kLineEnd);
  return head.append("Connection: close").append(kHeadEnd);
}

}  // namespace

void TzHttpConnection::Receive() {
  std::array<char, std::size_t{16} << 10U> piece;
  while (state == State::Receiving) {
    const ssize_t count = recv(socket.Get(), piece.data(), piece.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    if (count <= 0) {
      state = State::Ended;
      return;
    }
    incoming.append(piece.data(), static_cast<std::size_t>(count));
    TakeRequest();
  }
}

void TzHttpConnection::TakeRequest() {
  if (headBytes == 0) {
    const std::size_t end = incoming.find(kHeadEnd);
    const std::size_t headSize = end == std::string::npos ? incoming.size() : end;
    if (headSize > kMostHeaderBytes ||
        (end != std::string::npos && !TakeHead(std::string_view(incoming).substr(0, end)))) {
      state = State::Ended;
      return;
    }
    if (end == std::string::npos) return;
    headBytes = end + kHeadEnd.size();
  }
  if (incoming.size() < headBytes + bodyBytes) return;
  body = incoming.substr(headBytes, bodyBytes);
  incoming.clear();
  state = State::Received;
}

/// Reads the request's line and how long its body is. False if there is something that we don't take.
bool TzHttpConnection::TakeHead(std::string_view head) {
  std::string_view line = head.substr(0, head.find(kLineEnd));
  const std::size_t first = line.find(' ');
  const std::size_t last = line.rfind(' ');
  if (first == std::string_view::npos || first == last || !line.substr(last + 1).starts_with("HTTP/1.")) {
    return false;
  }
  method = line.substr(0, first);
  target = line.substr(first + 1, last - first - 1);
  while (line.size() + kLineEnd.size() <= head.size()) {
    head.remove_prefix(line.size() + kLineEnd.size());
    line = head.substr(0, head.find(kLineEnd));
    if (IsField(line, "transfer-encoding")) return false;
    if (!IsField(line, "content-length")) continue;
    const auto size = ReadNumber(line);
    if (!size || *size > kMostBodyBytes) return false;
    bodyBytes = *size;
  }
  return true;
}

void TzHttpConnection::Respond(std::string_view status, std::string_view fields, std::string_view content) {
  outgoing = MakeHead(status, fields, content.size()).append(content);
  state = State::Sending;
}

void TzHttpConnection::RespondWithFile(std::string_view fields, std::unique_ptr<TzReadStream> file,
                                       std::uint64_t size) {
  outgoing = MakeHead("200 OK", fields, size);
  source = std::move(file);
  sourceLeft = size;
  state = State::Sending;
}

/// True if there is more to send. A file that shrank ends the connection short of its length, which the other
/// side sees.
bool TzHttpConnection::FillFromFile() {
  if (source == nullptr || sourceLeft == 0) return false;
  constexpr std::uint64_t kPiece = std::uint64_t{256} << 10U;
  outgoing.resize(static_cast<std::size_t>(std::min(sourceLeft, kPiece)));
  sent = 0;
  const std::ptrdiff_t count = source->Read(std::as_writable_bytes(std::span(outgoing)));
  if (count <= 0) return false;
  outgoing.resize(static_cast<std::size_t>(count));
  sourceLeft -= static_cast<std::uint64_t>(count);
  return true;
}

void TzHttpConnection::Send() {
  while (state == State::Sending) {
    if (sent == outgoing.size() && !FillFromFile()) {
      state = State::Ended;
      return;
    }
    const ssize_t count = send(socket.Get(), outgoing.data() + sent, outgoing.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    if (count < 0) {
      state = State::Ended;
      return;
    }
    sent += static_cast<std::size_t>(count);
  }
}
