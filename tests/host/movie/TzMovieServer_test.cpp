// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMovieServer.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <atomic>
#include <future>

#include "support/TestSession.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Sends the text to the port and returns what comes back until the connection ends.
std::string Exchange(std::uint16_t port, const std::string& text) {
  const TzFileDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  EXPECT_EQ(connect(client.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  send(client.Get(), text.data(), text.size(), MSG_NOSIGNAL);
  std::string answer;
  std::array<char, 4096> piece;
  for (ssize_t count = 0; (count = recv(client.Get(), piece.data(), piece.size(), 0)) > 0;) {
    answer.append(piece.data(), static_cast<std::size_t>(count));
  }
  return answer;
}

class TzMovieServerTest : public testing::Test {
 protected:
  TzMovieServerTest() {
    EXPECT_TRUE(server.Start());
    address = server.GetAddress();
    path = address.substr(address.find('/', 7));
  }

  /// The client's answers, while the server serves.
  template <typename Client>
  auto Serve(Client client) {
    std::atomic<bool> isDone = false;
    auto result = std::async(std::launch::async, [&] {
      auto answer = client();
      isDone = true;
      return answer;
    });
    EXPECT_EQ(server.WaitForAnswer([&] { return !isDone; }), std::nullopt);
    return result.get();
  }

  TestFolder folder;
  TzMovieServer server{folder.Write("game.swf", std::string(900'000, 'm')),
                       folder.Write("player/ruffle.js", "player").GetParentTzPath()};
  std::string address;
  std::string path;
};

}  // namespace

TEST_F(TzMovieServerTest, ServesItsFilesAndRefusesEverythingElse) {
  folder.Write("secret.js", "secret");
  const std::string end = " HTTP/1.1\r\n\r\n";
  const struct {
    std::string request;
    std::string start;
    std::string end;
  } cases[] = {
      {"GET " + path + end, "HTTP/1.1 200", "</html>\n"},
      {"GET " + address + end, "HTTP/1.1 200", "</html>\n"},
      {"GET " + path + "page.js" + end, "HTTP/1.1 200", ");\n"},
      {"GET " + path + "player/ruffle.js" + end, "HTTP/1.1 200", "player"},
      {"GET " + path + "movie.swf" + end, "HTTP/1.1 200", std::string(900'000, 'm')},
      {"GET /" + end, "HTTP/1.1 403", ""},
      {"GET /movie.swf" + end, "HTTP/1.1 403", ""},
      {"GET " + path + "secret.js" + end, "HTTP/1.1 403", ""},
      {"GET " + path + "player/../secret.js" + end, "HTTP/1.1 403", ""},
      {"GET " + path + "player/..%2Fsecret.js" + end, "HTTP/1.1 403", ""},
      {"GET " + path + "player/missing.js" + end, "HTTP/1.1 403", ""},
      {"GET http://127.0.0.1:1" + path + end, "HTTP/1.1 403", ""},
      {"GET http://example.com/" + end, "HTTP/1.1 403", ""},
      {"CONNECT example.com:443" + end, "HTTP/1.1 403", ""},
      {"POST " + path + end, "HTTP/1.1 403", ""},
      {"GET " + path + "next" + end, "HTTP/1.1 403", ""},
      // What is no request, or too large a one, ends without an answer.
      {"GET\r\n\r\n", "", ""},
      {"GET " + path + " HTTP/1.1\r\nX: " + std::string(20'000, 'x') + "\r\n\r\n", "", ""},
      {"POST " + path + "next HTTP/1.1\r\nContent-Length: 65537\r\n\r\n", "", ""},
      {"POST " + path + "next HTTP/1.1\r\ncontent-length: -1\r\n\r\n", "", ""},
      {"POST " + path + "next HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n", "", ""},
  };
  for (const auto& [request, start, tail] : cases) {
    const std::string answer = Serve([&, text = request] { return Exchange(server.GetPort(), text); });
    EXPECT_THAT(answer, StartsWith(start)) << request;
    EXPECT_TRUE(answer.ends_with(tail)) << request;
    EXPECT_EQ(answer.empty(), start.empty()) << request;
  }
  EXPECT_TRUE(server.WasPageAsked());
  EXPECT_TRUE(server.GetMovieAsked().has_value());
}

TEST_F(TzMovieServerTest, APostsAnswerIsTheNextRequest) {
  auto page = std::async(std::launch::async, [&] {
    return Exchange(server.GetPort(), "POST " + path + "next HTTP/1.1\r\nContent-Length: 6\r\n\r\nloaded");
  });
  EXPECT_EQ(server.WaitForAnswer([] { return true; }), "loaded");
  server.Ask("<invoke/>");
  bool goesOn = true;
  EXPECT_EQ(server.WaitForAnswer([&] { return std::exchange(goesOn, false); }), std::nullopt);
  EXPECT_THAT(page.get(), HasSubstr("\r\n\r\n<invoke/>"));
}
