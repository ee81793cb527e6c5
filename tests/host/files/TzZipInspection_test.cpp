// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipInspection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include "support/RawZip.h"
#include "support/TestSession.h"

namespace {

using testing::ElementsAre;

struct Fault {
  TzZipFaultKind kind;
  std::string entry;
  std::string message;
  bool operator==(const Fault&) const = default;
};
void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.entry << ": " << fault.message; }

class TzZipInspectionTest : public testing::Test {
 protected:
  TzZipFailure Open(const RawZip& archive) { return inspection.Open(folder.Write("a.zip", archive.Build())); }

  [[nodiscard]] std::vector<Fault> Faults() const {
    std::vector<Fault> faults;
    for (const auto& [kind, failure] : inspection.GetFaults()) {
      faults.push_back({kind, failure.entry, failure.message});
    }
    return faults;
  }

  TestFolder folder;
  TzZipInspection inspection;
};

TEST_F(TzZipInspectionTest, ListsEveryFaultAndWhatIsSound) {
  ASSERT_FALSE(Open({.entries = {{.name = "a.txt", .content = "one"},
                                 {.name = "../b"},
                                 {.name = "c", .flags = 1},
                                 {.name = "d", .content = "x", .localSize = 9},
                                 {.name = "a.txt"},
                                 {.name = "e\\f.txt", .content = "two"}}}));
  EXPECT_THAT(Faults(),
              ElementsAre(Fault{TzZipFaultKind::Name, "../b", "the entry's name leads out of the folder"},
                          Fault{TzZipFaultKind::Packing, "c", "the entry is encrypted"},
                          Fault{TzZipFaultKind::Data, "d", "the entry's header disagrees with the directory"},
                          Fault{TzZipFaultKind::Clash, "a.txt", "two entries have this name"}));
  std::vector<std::string> sound;
  for (const TzZipEntry& entry : inspection.GetEntries()) {
    if (!entry.isFaulty) sound.push_back(entry.name + (entry.hasBackslash ? " with back-slashes" : ""));
  }
  EXPECT_THAT(sound, ElementsAre("a.txt", "e/f.txt with back-slashes"));
}

TEST_F(TzZipInspectionTest, KnowsNamesThatAreMarkedAsUtf8) {
  ASSERT_FALSE(Open({.entries = {{.name = "caf\x82"},
                                 {.name = "caf\u00E9s", .flags = 1U << 11U},
                                 {.name = "x", .extra = RawZip::UnicodePath("x", "\u00E9")}}}));
  std::vector<bool> marked;
  for (const TzZipEntry& entry : inspection.GetEntries()) marked.push_back(entry.isNameUtf8);
  EXPECT_THAT(marked, ElementsAre(false, true, true));
}

TEST_F(TzZipInspectionTest, HandsOutContentInPieces) {
  const std::string large(40U << 20U, 'x');
  ASSERT_FALSE(Open({.entries = {{.name = "large", .content = large, .deflate = true},
                                 {.name = "stored", .content = "abc"},
                                 {.name = "broken", .content = "abc", .crc = 1},
                                 {.name = "/faulty"}}}));
  const auto& entries = inspection.GetEntries();
  std::string content;
  std::size_t largest = 0;
  const auto take = [&](std::span<const std::byte> piece) {
    largest = std::max(largest, piece.size());
    content.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  };
  EXPECT_FALSE(inspection.Read(entries[0], take));
  EXPECT_TRUE(content == large);
  EXPECT_LE(largest, 16U << 20U);
  content.clear();
  EXPECT_FALSE(inspection.Read(entries[1], take));
  EXPECT_EQ(content, "abc");
  EXPECT_EQ(inspection.Read(entries[2], take).message, "the entry's CRC-32 doesn't match");
  EXPECT_THROW(static_cast<void>(inspection.Read(entries[3], take)), std::logic_error);
}

TEST_F(TzZipInspectionTest, VisitsEveryFileAndGoesOnBehindADamagedOne) {
  RawZip archive = {.entries = {{.name = "folder/"}, {.name = "/faulty"}}};
  for (int number = 0; number < 200; ++number) {
    RawEntry entry = {.name = std::to_string(number), .content = std::string(20'000, 'x'), .deflate = true};
    if (number % 50 == 7) entry.crc = 1;
    archive.entries.push_back(entry);
  }
  ASSERT_FALSE(Open(archive));
  std::atomic<std::size_t> bytes = 0;
  const auto visit = [&bytes](const TzZipEntry& entry, const TzZipInspection::Reader& read) -> TzZipFailure {
    // One is left alone, one is only checked.
    if (entry.name == "57") return {};
    if (entry.name == "107") return read({});
    return read([&bytes](std::span<const std::byte> piece) { bytes += piece.size(); });
  };
  std::vector<TzZipFailure> bad;
  EXPECT_FALSE(inspection.VisitAll(visit, bad));
  std::vector<std::string> names;
  for (const TzZipFailure& failure : bad) names.push_back(failure.entry + ": " + failure.message);
  EXPECT_THAT(names,
              ElementsAre("7: the entry's CRC-32 doesn't match", "107: the entry's CRC-32 doesn't match",
                          "157: the entry's CRC-32 doesn't match"));
  EXPECT_EQ(bytes, 198 * 20'000U);
}

TEST_F(TzZipInspectionTest, FailsWithoutADirectory) {
  EXPECT_EQ(inspection.Open(folder.Write("a.zip", "text")).code, kTzBadContent);
}

TEST_F(TzZipInspectionTest, TellsAnArchiveThatCannotBeReadFromADamagedOne) {
  // The loopback device has no speed: its file opens, and says that it has content, but reading it fails.
  const TzPath unreadable("/sys/class/net/lo/speed");
  if (!std::filesystem::exists(unreadable.GetNative())) GTEST_SKIP() << "no " << unreadable.GetNative();
  const TzZipFailure failure = inspection.Open(unreadable);
  EXPECT_EQ(failure.code, kTzMachineFailure) << failure.message;
  EXPECT_EQ(failure.errorNumber, EINVAL);
}

}  // namespace
