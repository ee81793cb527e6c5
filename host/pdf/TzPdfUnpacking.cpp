// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfUnpacking.h"

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

std::uint64_t allowedBytes = 0;
std::uint64_t unpackedBytes = 0;
int filterCount = 0;

/// Counts what passes.
class CountedBytes final : public Pipeline {
 public:
  explicit CountedBytes(Pipeline* receiver) : Pipeline("count", receiver) {}

  void write(unsigned char const* data, size_t length) override {
    unpackedBytes += length;
    TzPdfUnpacking::Check();
    getNext()->write(data, length);
  }
  void finish() override { getNext()->finish(); }
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
}

void TzPdfUnpacking::Check() {
  if (unpackedBytes > allowedBytes) throw TzPdfFailure("its packed objects are too large");
}
