// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzStrobePlayer.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cstdlib>

#include "host/movie/TzAnimationUtils.h"
#include "support/RecordedProblems.h"
#include "support/TestMovies.h"
#include "support/TestSession.h"

using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TzVariant AskForIt(TzStrobePlayer& player) {
  return player.CallActionScriptFunction(
      R"(<invoke name="tzGetValue" returntype="xml"><arguments><string>isSendScoreSWF</string></arguments></invoke>)");
}

/// What the player makes of one file. A player for each: it plays one movie.
struct Asked {
  explicit Asked(const TzPath& movie) : isLoaded(player.LoadMovie(movie.GetString(), 0, 1) != 0) {}
  TzErrorCodeEnum Read(const char* name, std::int32_t& value) {
    return TzAnimationUtils::GetVariableForTzSWF(player, kTzActionScript3, name, value);
  }

  TzStrobePlayer player{32};
  bool isLoaded;
};

class TzStrobePlayerTest : public testing::Test {
 protected:
  TzStrobePlayerTest() { LinkInstalledPlayer(); }

  RecordedProblems problems;
};

}  // namespace

TEST_F(TzStrobePlayerTest, AMovieTellsWhatItIsAskedForInItsOwnKinds) {
  const struct {
    const char* movie;
    TzVariant answer;
  } cases[] = {{"interaction", "true"}, {"says-flag", true}, {"says-number", 1}, {"says-nothing", {}}};
  for (const auto& [movie, answer] : cases) {
    Asked asked(TestMovie(movie));
    EXPECT_TRUE(asked.isLoaded) << movie;
    EXPECT_EQ(AskForIt(asked.player), answer) << movie;
    std::int32_t width = 0;
    std::int32_t height = 7;
    EXPECT_EQ(asked.Read("MovieWidth", width), kTzSuccess) << movie;
    EXPECT_EQ(width, 640) << movie;
    EXPECT_EQ(asked.Read("MovieHeight", height), kTzSuccess) << movie;
    EXPECT_EQ(height, 480) << movie;
    EXPECT_EQ(asked.Read("<Depth> & more", height), kTzFailure) << movie;
    EXPECT_EQ(height, 480) << movie;
  }
  EXPECT_THAT(problems.Texts(), IsEmpty());
}

TEST_F(TzStrobePlayerTest, AMovieThatOffersNothingIsLoadedAndGivesNoAnswer) {
  Asked asked(TestMovie("deaf"));
  EXPECT_TRUE(asked.isLoaded);
  EXPECT_TRUE(AskForIt(asked.player).IsNull());
  EXPECT_TRUE(asked.player.CallActionScriptFunction("tzGetValue").IsNull());
  EXPECT_THAT(problems.Texts(), ElementsAre("deaf.swf: the movie doesn't offer what it was asked for",
                                            "deaf.swf: what it is asked isn't a call of a function"));
}

TEST_F(TzStrobePlayerTest, AMovieThatNeverComesToAnEndIsGivenUp) {
  const auto start = std::chrono::steady_clock::now();
  Asked asked(TestMovie("endless"));
  EXPECT_TRUE(AskForIt(asked.player).IsNull());
  EXPECT_LE(std::chrono::steady_clock::now() - start,
            TzStrobePlayer::kStartPatience + TzStrobePlayer::kPatience);
  EXPECT_THAT(problems.Texts(), ElementsAre(AnyOf(HasSubstr("endless.swf: the file is a movie, but"),
                                                  HasSubstr("doesn't offer"))));
}

TEST_F(TzStrobePlayerTest, WhatIsNoMovieIsRefusedBeforeOrByThePlayer) {
  const TestFolder folder;
  const struct {
    TzPath file;
    const char* problem;
  } cases[] = {
      {folder.Write("a.swf", "PK\3\4 and more"), "isn't a movie"},
      {folder.Write("b.swf", "FWS"), "too short"},
      {folder.Path() / "missing.swf", "not to be opened"},
      {folder.Write("d.swf", "CWS\x0A" + std::string(600, 'x')), "can't play it"},
  };
  for (const auto& [file, problem] : cases) {
    problems.problems.clear();
    Asked asked(file);
    EXPECT_FALSE(asked.isLoaded) << file;
    EXPECT_THAT(problems.Texts(), ElementsAre(HasSubstr(problem))) << file;
    EXPECT_TRUE(AskForIt(asked.player).IsNull()) << file;
  }
}

TEST_F(TzStrobePlayerTest, StoppingEndsTheBrowserAndLeavesNothingBehind) {
  const TestFolder temporary;
  setenv("TMPDIR", temporary.Path().GetNative().c_str(), 1);
  problems.stopAt = 3;
  {
    Asked asked(TestMovie("endless"));
    AskForIt(asked.player);
  }
  EXPECT_THAT(problems.Texts(), IsEmpty());
  EXPECT_EQ(problems.steps.front().activity, "asking endless.swf");
  for (const std::string& left : ListTree(temporary.Path()))
    EXPECT_THAT(left, testing::Not(HasSubstr("profile")));
  unsetenv("TMPDIR");
}

TEST_F(TzStrobePlayerTest, AMovieReachesNoOtherServerOfThisMachine) {
  const TzFileDescriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(bind(listener.Get(), generic, size), 0);
  ASSERT_EQ(listen(listener.Get(), 5), 0);
  ASSERT_EQ(getsockname(listener.Get(), generic, &size), 0);
  const std::string port = std::to_string(ntohs(address.sin_port));

  Asked asked(TestMovie("reaching"));
  ASSERT_TRUE(asked.isLoaded);
  for (const char* host : {"127.0.0.1:", "localhost:"}) {
    std::int32_t value = 0;
    static_cast<void>(asked.Read(("http://" + (host + port) + "/").c_str(), value));
  }
  pollfd wait{listener.Get(), POLLIN, 0};
  EXPECT_EQ(poll(&wait, 1, 1000), 0);
}

TEST_F(TzStrobePlayerTest, WithoutABrowserThatRunsItSaysSo) {
  const TestFolder programs;
  const std::string path = std::getenv("PATH");
  setenv("PATH", programs.Path().GetNative().c_str(), 1);
  EXPECT_FALSE(Asked(TestMovie("interaction")).isLoaded);
  chmod(programs.Write("chromium", "#!/bin/sh\nexit 1\n").GetNative().c_str(), S_IRWXU);
  EXPECT_FALSE(Asked(TestMovie("interaction")).isLoaded);
  setenv("PATH", path.c_str(), 1);
  EXPECT_THAT(problems.Texts(),
              ElementsAre(HasSubstr("install Chromium, Google Chrome, Microsoft Edge or Firefox"),
                          HasSubstr("/chromium: the browser ended while it played")));
}
