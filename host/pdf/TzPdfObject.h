// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

class QPDFObjectHandle;

/// A handle on an object of a PDF document (PDF 32000-1, 7.3). Copies name the same object: what one changes,
/// the others see. A reference to an indirect object reads as that object.
///
/// Questions have an answer for every kind of object; changing one that isn't of the kind throws
/// `TzPdfFailure`. A handle is of use while its document is open.
class TzPdfObject {
 public:
  /// The null object, which also stands for what is absent.
  TzPdfObject();

  /// New direct objects. Names come without their slash.
  static TzPdfObject NewName(std::string_view name);
  /// A string of these bytes.
  static TzPdfObject NewString(std::string_view bytes);
  static TzPdfObject NewInteger(long long value);
  static TzPdfObject NewDictionary();
  static TzPdfObject NewArray();

  [[nodiscard]] bool IsNull() const;
  /// False for a stream.
  [[nodiscard]] bool IsDictionary() const;
  [[nodiscard]] bool IsArray() const;
  [[nodiscard]] bool IsString() const;
  [[nodiscard]] bool IsName(std::string_view name) const;
  /// The Boolean true.
  [[nodiscard]] bool IsTrue() const;
  [[nodiscard]] bool IsIndirect() const;
  /// The number of an indirect object, 0 for a direct one.
  [[nodiscard]] int GetNumber() const;

  /// A string's bytes; empty for anything else.
  [[nodiscard]] std::string GetBytes() const;
  /// A string's text as UTF-8, whichever of the encodings of a text string it has; empty for anything else.
  [[nodiscard]] std::string GetText() const;
  /// 0 for anything but an integer.
  [[nodiscard]] long long GetInteger() const;

  /// A dictionary's value, null if it has none.
  [[nodiscard]] TzPdfObject Get(std::string_view key) const;
  [[nodiscard]] bool Has(std::string_view key) const { return !Get(key).IsNull(); }
  /// Null takes the key out.
  void Set(std::string_view key, const TzPdfObject& value);

  /// An array's entries; 0 and null for anything else.
  [[nodiscard]] std::size_t GetCount() const;
  [[nodiscard]] TzPdfObject At(std::size_t index) const;
  void Append(const TzPdfObject& value);
  /// Before the entry at the index, which is at most the count.
  void Insert(std::size_t index, const TzPdfObject& value);
  void Replace(std::size_t index, const TzPdfObject& value);

  /// For the other classes of the library's folder.
  [[nodiscard]] const QPDFObjectHandle& GetHandle() const { return *handle; }
  explicit TzPdfObject(const QPDFObjectHandle& object);

 private:
  std::shared_ptr<QPDFObjectHandle> handle;
};
