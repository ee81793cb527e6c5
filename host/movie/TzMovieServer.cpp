// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMovieServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/random.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/movie/TzMoviePage.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::size_t kMostConnections = 64;

/// Empty on failure.
std::string MakeToken() {
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return {};
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string token;
  for (const unsigned char byte : bytes) {
    token += kDigits[byte >> 4U];
    token += kDigits[byte & 0xFU];
  }
  return token;
}

/// Binds to the loopback address and any port, which is written into `port`.
bool Listen(const TzFileDescriptor& socket, std::uint16_t& port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (!socket.IsOpen() || bind(socket.Get(), generic, size) != 0 || listen(socket.Get(), 16) != 0 ||
      getsockname(socket.Get(), generic, &size) != 0) {
    return false;
  }
  port = ntohs(address.sin_port);
  return true;
}

std::string MakeFields(std::string_view type) {
  return "Content-Type: " + std::string(type) + "\r\n" + std::string(TzMoviePage::GetHeaderFields());
}

/// The player's files lie side by side; a name with a separator, or one that hides, is none of them.
const char* GetPlayerFileType(std::string_view name) {
  if (name.starts_with('.') || name.find_first_of("/\\%") != std::string_view::npos) return nullptr;
  if (name.ends_with(".js")) return "text/javascript";
  if (name.ends_with(".wasm")) return "application/wasm";
  return nullptr;
}

void Refuse(TzHttpConnection& connection) { connection.Respond("403 Forbidden", {}, {}); }

}  // namespace

TzMovieServer::TzMovieServer(TzPath movieFile, TzPath playerFolder)
    : movie(std::move(movieFile)), player(std::move(playerFolder)) {}

bool TzMovieServer::Start() {
  token = MakeToken();
  listener = TzFileDescriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!token.empty() && Listen(listener, port)) return true;
  TzReportSystemProblem(errno, "127.0.0.1", "can't listen");
  return false;
}

std::string TzMovieServer::GetAddress() const {
  return "http://127.0.0.1:" + std::to_string(port) + "/" + token + "/";
}

void TzMovieServer::Ask(const std::string& request) {
  if (waiting != nullptr) waiting->Respond("200 OK", MakeFields("text/plain; charset=utf-8"), request);
  waiting = nullptr;
}

std::optional<std::string> TzMovieServer::WaitForAnswer(const std::function<bool()>& goesOn) {
  constexpr std::chrono::milliseconds kPatience(100);
  Clock::time_point nextLook = Clock::now();
  while (!answer.has_value()) {
    const Clock::time_point now = Clock::now();
    if (now >= nextLook) {
      if (!goesOn()) return std::nullopt;
      nextLook = now + kPatience;
    }
    ServeOnce(static_cast<int>(kPatience.count()));
  }
  return std::exchange(answer, std::nullopt);
}

void TzMovieServer::ServeOnce(int milliseconds) {
  std::vector<pollfd> waits{{listener.Get(), POLLIN, 0}};
  for (const TzHttpConnection& connection : connections) {
    short events = 0;
    if (connection.GetState() == TzHttpConnection::State::Receiving) events = POLLIN;
    if (connection.GetState() == TzHttpConnection::State::Sending) events = POLLOUT;
    // One whose request waits for its answer is left alone until then.
    waits.push_back({events != 0 ? connection.GetSocket() : -1, events, 0});
  }
  if (poll(waits.data(), waits.size(), milliseconds) <= 0) return;
  auto wait = waits.begin() + 1;
  for (TzHttpConnection& connection : connections) {
    if ((wait++)->revents == 0) continue;
    connection.Receive();
    if (connection.GetState() == TzHttpConnection::State::Received) Handle(connection);
    connection.Send();
  }
  connections.remove_if([](const TzHttpConnection& connection) {
    return connection.GetState() == TzHttpConnection::State::Ended;
  });
  if (waits.front().revents != 0) Accept();
}

void TzMovieServer::Accept() {
  TzFileDescriptor accepted(accept4(listener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (accepted.IsOpen() && connections.size() < kMostConnections)
    connections.emplace_back(std::move(accepted));
}

/// What of ours a target names; empty if it names something else.
std::optional<std::string> TzMovieServer::GetServedName(const std::string& target) const {
  const std::string whole = GetAddress();
  const std::string path = "/" + token + "/";
  for (const std::string& start : {whole, path}) {
    if (target.starts_with(start)) return target.substr(start.size());
  }
  return std::nullopt;
}

void TzMovieServer::Handle(TzHttpConnection& connection) {
  const auto name = GetServedName(connection.GetTarget());
  if (name && connection.GetMethod() == "GET") {
    HandleGet(connection, *name);
  } else if (name == "next" && connection.GetMethod() == "POST" && waiting == nullptr &&
             !answer.has_value()) {
    answer = connection.GetBody();
    waiting = &connection;
  } else {
    Refuse(connection);
  }
}

void TzMovieServer::HandleGet(TzHttpConnection& connection, const std::string& name) {
  constexpr std::string_view kPlayer = "player/";
  if (name.empty()) {
    wasPageAsked = true;
    connection.Respond("200 OK", MakeFields("text/html; charset=utf-8"), TzMoviePage::GetPage());
  } else if (name == "page.js") {
    connection.Respond("200 OK", MakeFields("text/javascript; charset=utf-8"), TzMoviePage::GetScript());
  } else if (name == "movie.swf") {
    if (!movieAsked) movieAsked = Clock::now();
    ServeFile(connection, movie, "application/x-shockwave-flash");
  } else if (name.starts_with(kPlayer) && GetPlayerFileType(name.substr(kPlayer.size())) != nullptr) {
    const std::string file = name.substr(kPlayer.size());
    ServeFile(connection, player / file, GetPlayerFileType(file));
  } else {
    Refuse(connection);
  }
}

void TzMovieServer::ServeFile(TzHttpConnection& connection, const TzPath& file, const char* type) {
  std::unique_ptr<TzReadStream> stream = TzStreamUtil::CreateFileStreamRead(TzFile(file));
  if (stream == nullptr) return Refuse(connection);
  connection.RespondWithFile(MakeFields(type), std::move(stream), TzFileSystem::Current().GetSize(file));
}
