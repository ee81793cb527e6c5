// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfUnpacking.h"

#include <malloc.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFStreamFilter.hh>
#include <span>
#include <vector>

#include "host/pdf/TzPdfFailure.h"

namespace {

/// Millions of objects are less.
constexpr std::uint64_t kMostBytes = std::uint64_t{256} << 20U;
/// What any document may have, and what it may have on top: objects hardly pack to less than a tenth.
constexpr std::uint64_t kFreeBytes = std::uint64_t{8} << 20U;
constexpr std::uint64_t kMostTimes = 24;
/// Of streams that are being unpacked, one within the other, all together. Each takes memory before it has
/// read anything.
constexpr int kMostFilters = 100;
constexpr int kMostRowBytes = 1 << 20;

/// Memory for the objects of any document, for each byte of its file on top, and at most. Documents of
/// objects alone, unpacked, take some 50 bytes for each byte.
constexpr std::uint64_t kFreeMemory = std::uint64_t{128} << 20U;
constexpr std::uint64_t kMemoryTimes = 64;
constexpr std::uint64_t kMostMemory = std::uint64_t{2} << 30U;
/// What a number takes, the smallest of objects.
constexpr std::uint64_t kBytesOfObject = 300;
/// Measuring costs more than most reads.
constexpr unsigned kReadsPerMeasurement = 256;

std::uint64_t allowedMemory = 0;
std::uint64_t memoryAtStart = 0;
unsigned reads = 0;
/// The library takes a stream that it fails to read for empty and goes on: the document is refused later.
bool tookTooMuch = false;
std::uint64_t allowedBytes = 0;
std::uint64_t unpackedBytes = 0;
int filterCount = 0;

/// What this process has allocated.
std::uint64_t MeasureMemory() {
  const struct mallinfo2 usage = mallinfo2();
  return usage.uordblks + usage.hblkhd;
}

void CheckMemory(std::uint64_t expected) {
  const std::uint64_t now = MeasureMemory();
  const std::uint64_t taken = now > memoryAtStart ? now - memoryAtStart : 0;
  tookTooMuch = tookTooMuch || taken + expected > allowedMemory;
  if (tookTooMuch) throw TzPdfFailure("its objects take too much memory");
}

/// Counts what passes. The objects in a stream are all made at once when it is unpacked, so what they will
/// take is known by their number before.
class CountedBytes final : public Pipeline {
 public:
  explicit CountedBytes(Pipeline* receiver) : Pipeline("count", receiver) {}

  void write(unsigned char const* data, size_t length) override {
    unpackedBytes += length;
    for (const unsigned char byte : std::span(data, length)) CountObject(byte);
    TzPdfUnpacking::Check();
    if (objects - measured >= kObjectsPerMeasurement) {
      measured = objects;
      CheckMemory(objects * kBytesOfObject);
    }
    getNext()->write(data, length);
  }
  void finish() override {
    CheckMemory(objects * kBytesOfObject);
    getNext()->finish();
  }

 private:
  static constexpr std::uint64_t kObjectsPerMeasurement = 50'000;

  /// An object starts with its delimiter, or with the first character behind one or behind a space.
  void CountObject(unsigned char byte) {
    const bool isSpace = byte <= ' ';
    const bool isDelimiter = byte == '[' || byte == '(' || byte == '<' || byte == '/';
    if (isDelimiter || (!isSpace && isBetween)) ++objects;
    isBetween = isSpace || isDelimiter || byte == ']' || byte == ')' || byte == '>';
  }

  std::uint64_t objects = 0;
  std::uint64_t measured = 0;
  bool isBetween = true;
};

/// What the PNG filters predict of a byte from those to the left, above and above left (PNG, 9.4).
int PredictByPaeth(int left, int above, int aboveLeft) {
  const int estimate = left + above - aboveLeft;
  const int toLeft = std::abs(estimate - left);
  const int toAbove = std::abs(estimate - above);
  const int toAboveLeft = std::abs(estimate - aboveLeft);
  if (toLeft <= toAbove && toLeft <= toAboveLeft) return left;
  return toAbove <= toAboveLeft ? above : aboveLeft;
}

/// Undoes the predictors of PNG: each row is its filter's number and its bytes.
class PngRows final : public Pipeline {
 public:
  PngRows(std::size_t rowBytes, std::size_t pixelBytes, Pipeline* receiver)
      : Pipeline("rows", receiver), stride(pixelBytes), above(rowBytes), row(rowBytes) {}

  void write(unsigned char const* data, size_t length) override {
    for (const unsigned char byte : std::span(data, length)) {
      if (!hasFilter) {
        filter = byte;
        hasFilter = true;
        continue;
      }
      row[filled] = static_cast<unsigned char>(byte + Predict(filled));
      if (++filled == row.size()) FinishRow();
    }
  }
  void finish() override {
    if (filled > 0) FinishRow();
    getNext()->finish();
  }

 private:
  [[nodiscard]] int Predict(std::size_t index) const {
    const int left = index >= stride ? row[index - stride] : 0;
    const int aboveLeft = index >= stride ? above[index - stride] : 0;
    const std::array<int, 5> predictions = {0, left, above[index], (left + above[index]) / 2,
                                            PredictByPaeth(left, above[index], aboveLeft)};
    return filter < predictions.size() ? predictions[filter] : 0;
  }

  void FinishRow() {
    getNext()->write(row.data(), filled);
    row.swap(above);
    filled = 0;
    hasFilter = false;
  }

  std::size_t stride;
  std::vector<unsigned char> above;
  std::vector<unsigned char> row;
  std::size_t filled = 0;
  unsigned char filter = 0;
  bool hasFilter = false;
};

class BoundedDeflate final : public QPDFStreamFilter {
 public:
  BoundedDeflate() { ++filterCount; }
  ~BoundedDeflate() override { --filterCount; }
  BoundedDeflate(const BoundedDeflate&) = delete;
  BoundedDeflate& operator=(const BoundedDeflate&) = delete;

  bool setDecodeParms(QPDFObjectHandle parameters) override {
    if (filterCount > kMostFilters) return false;
    if (parameters.isNull()) return true;
    if (!parameters.isDictionary()) return false;
    const auto read = [&](const char* key, int absent) {
      QPDFObjectHandle value = parameters.getKey(key);
      return value.isInteger() ? value.getIntValueAsInt() : absent;
    };
    const int predictor = read("/Predictor", 1);
    if (predictor == 1) return true;
    const int bits = read("/BitsPerComponent", 8);
    const int colors = read("/Colors", 1);
    const int columns = read("/Columns", 1);
    const auto isWithin = [](int value, int most) { return value >= 1 && value <= most; };
    if (predictor < 10 || !isWithin(bits, 16) || !isWithin(colors, 32) ||
        !isWithin(columns, kMostRowBytes / 64)) {
      return false;
    }
    rowBytes = (static_cast<std::size_t>(columns) * static_cast<std::size_t>(bits * colors) + 7) / 8;
    pixelBytes = static_cast<std::size_t>(bits * colors + 7) / 8;
    return true;
  }

  Pipeline* getDecodePipeline(Pipeline* next) override {
    if (rowBytes > 0) {
      rows = std::make_unique<PngRows>(rowBytes, pixelBytes, next);
      next = rows.get();
    }
    counted = std::make_unique<CountedBytes>(next);
    inflate = std::make_unique<Pl_Flate>("inflate", counted.get(), Pl_Flate::a_inflate);
    return inflate.get();
  }

 private:
  std::size_t rowBytes = 0;
  std::size_t pixelBytes = 1;
  std::unique_ptr<Pipeline> rows;
  std::unique_ptr<Pipeline> counted;
  std::unique_ptr<Pipeline> inflate;
};

/// A filter that can't be bounded: it takes no parameters, so that nothing is read through it.
class RefusedFilter final : public QPDFStreamFilter {
 public:
  bool setDecodeParms(QPDFObjectHandle /*parameters*/) override { return false; }
  Pipeline* getDecodePipeline(Pipeline* next) override { return next; }
};

}  // namespace

void TzPdfUnpacking::Register() {
  QPDF::registerStreamFilter("/FlateDecode", [] { return std::make_shared<BoundedDeflate>(); });
  for (const char* name : {"/LZWDecode", "/RunLengthDecode"}) {
    QPDF::registerStreamFilter(name, [] { return std::make_shared<RefusedFilter>(); });
  }
}

void TzPdfUnpacking::StartDocument(std::uint64_t fileSize) {
  allowedBytes = std::min(kMostBytes, kFreeBytes + kMostTimes * std::min(fileSize, kMostBytes));
  unpackedBytes = 0;
  allowedMemory = std::min(kMostMemory, kFreeMemory + kMemoryTimes * std::min(fileSize, kMostMemory));
  memoryAtStart = MeasureMemory();
  reads = 0;
  tookTooMuch = false;
}

void TzPdfUnpacking::Check() {
  if (unpackedBytes > allowedBytes) throw TzPdfFailure("its packed objects are too large");
  if (tookTooMuch || ++reads % kReadsPerMeasurement == 0) CheckMemory(0);
}
