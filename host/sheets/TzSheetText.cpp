// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzSheetText.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <sstream>

#include "host/text/ITzStringDictionary.h"
#include "host/text/TzVariant.h"

namespace {

/// Tables that nest deeper are a mistake, and would be read by as deep a recursion.
constexpr std::size_t kDeepest = 64;

int LineOf(const YAML::Mark& mark) { return mark.line + 1; }

/// Builds the nodes of one document. Of each list or map that is open it has the node, and for a map the
/// entry whose value comes next.
class NodeBuilder : public YAML::EventHandler {
 public:
  explicit NodeBuilder(std::string fileName) : file(std::move(fileName)) {}

  TzSheetNode root;
  bool hasDocument = false;

  void OnDocumentStart(const YAML::Mark& mark) override {
    if (hasDocument) throw TzSheetError(file, LineOf(mark), "a second document starts here");
    hasDocument = true;
  }
  void OnDocumentEnd() override {}
  void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override {
    TzSheetNode node;
    node.line = LineOf(mark);
    Add(std::move(node));
  }
  void OnAlias(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override {
    throw TzSheetError(file, LineOf(mark), "an alias; a sheet says everything where it stands");
  }
  void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t /*anchor*/,
                const std::string& value) override {
    TzSheetNode node;
    node.kind = TzSheetNode::Kind::Scalar;
    node.line = LineOf(mark);
    node.text = value;
    // The parser marks what stands in quotes so.
    node.isQuoted = tag == "!";
    Add(std::move(node));
  }
  void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                       YAML::EmitterStyle::value /*style*/) override {
    Open(mark, TzSheetNode::Kind::List);
  }
  void OnSequenceEnd() override { Close(); }
  void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  YAML::EmitterStyle::value /*style*/) override {
    Open(mark, TzSheetNode::Kind::Map);
  }
  void OnMapEnd() override { Close(); }

 private:
  struct Opened {
    TzSheetNode node;
    std::optional<TzSheetNode::Entry> entry;
  };

  void Open(const YAML::Mark& mark, TzSheetNode::Kind kind) {
    if (open.size() == kDeepest)
      throw TzSheetError(file, LineOf(mark), "is nested deeper than " + std::to_string(kDeepest) + " levels");
    TzSheetNode node;
    node.kind = kind;
    node.line = LineOf(mark);
    open.push_back({std::move(node), std::nullopt});
  }

  void Close() {
    TzSheetNode node = std::move(open.back().node);
    open.pop_back();
    Add(std::move(node));
  }

  void Add(TzSheetNode node) {
    if (open.empty()) {
      root = std::move(node);
      return;
    }
    Opened& holder = open.back();
    if (holder.node.kind == TzSheetNode::Kind::List) {
      holder.node.items.push_back(std::move(node));
    } else if (!holder.entry) {
      holder.entry = StartEntry(holder.node, node);
    } else {
      holder.entry->value = std::move(node);
      holder.node.entries.push_back(std::move(*holder.entry));
      holder.entry.reset();
    }
  }

  [[nodiscard]] TzSheetNode::Entry StartEntry(const TzSheetNode& map, const TzSheetNode& key) const {
    if (key.kind != TzSheetNode::Kind::Scalar) throw TzSheetError(file, key.line, "a key has to be a word");
    if (map.Find(key.text) != nullptr)
      throw TzSheetError(file, key.line, "'" + key.text + "' stands here twice");
    TzSheetNode::Entry entry;
    entry.key = key.text;
    entry.line = key.line;
    return entry;
  }

  std::string file;
  std::vector<Opened> open;
};

bool IsWordLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= '0' && letter <= '9') || letter == '_';
}

template <typename Number>
std::optional<Number> ReadNumber(const std::string& text) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

const TzSheetNode* TzSheetNode::Find(std::string_view key) const {
  const auto found = std::ranges::find(entries, key, &Entry::key);
  return found != entries.end() ? &found->value : nullptr;
}

TzSheetText::TzSheetText(const TzResource& sheet, const ITzStringDictionary* words)
    : file(sheet.file), dictionary(words) {
  std::istringstream stream{std::string(sheet.bytes)};
  NodeBuilder builder(file);
  try {
    YAML::Parser parser(stream);
    while (parser.HandleNextDocument(builder)) {
    }
  } catch (const YAML::Exception& exception) {
    throw TzSheetError(file, LineOf(exception.mark), exception.msg);
  }
  root = std::move(builder.root);
  if (root.kind != TzSheetNode::Kind::Map) Refuse(root.line, "isn't a sheet: it has no keys");
}

void TzSheetText::Refuse(int line, const std::string& what) const { throw TzSheetError(file, line, what); }

const TzSheetNode& TzSheetText::Require(const TzSheetNode& map, std::string_view key,
                                        TzSheetNode::Kind kind) const {
  const TzSheetNode* node = map.Find(key);
  if (node == nullptr) Refuse(map.line, "'" + std::string(key) + "' is missing");
  if (node->kind != kind) Refuse(node->line, "'" + std::string(key) + "' has another kind of value");
  return *node;
}

std::string TzSheetText::ReadWord(const TzSheetNode& node) const {
  const bool isWord = node.kind == TzSheetNode::Kind::Scalar && !node.text.empty() &&
                      std::ranges::all_of(node.text, IsWordLetter);
  if (!isWord)
    Refuse(node.line, "'" + node.text + "' isn't a name; expected letters, digits and underscores");
  return node.text;
}

TzVariant TzSheetText::ReadValue(const TzSheetNode& node) const {  // NOLINT(misc-no-recursion)
  switch (node.kind) {
    case TzSheetNode::Kind::Scalar:
      return ReadScalar(node);
    case TzSheetNode::Kind::List: {
      TzVariant::List list;
      for (const TzSheetNode& item : node.items) list.push_back(ReadValue(item));
      return list;
    }
    case TzSheetNode::Kind::Map: {
      TzVariant::Dictionary dictionaryValue;
      for (const auto& [key, line, value] : node.entries) dictionaryValue[key] = ReadValue(value);
      return dictionaryValue;
    }
    case TzSheetNode::Kind::Nothing:
      break;
  }
  Refuse(node.line, "a value is missing; an empty text is \"\"");
}

TzVariant TzSheetText::ReadScalar(const TzSheetNode& node) const {
  if (node.isQuoted) return TzString(node.text);
  if (node.text == "true") return true;
  if (node.text == "false") return false;
  if (const auto integer = ReadNumber<std::int64_t>(node.text)) return *integer;
  if (const auto number = ReadNumber<double>(node.text); number && std::isfinite(*number)) return *number;
  if (node.text.starts_with("localize(")) return Localize(node);
  Refuse(node.line,
         "'" + node.text + "' is no value; expected true, false, a number, a \"text\" or localize(\"key\")");
}

TzVariant TzSheetText::Localize(const TzSheetNode& node) const {
  constexpr std::string_view kStart = "localize(\"";
  constexpr std::string_view kEnd = "\")";
  const std::string& text = node.text;
  const bool isCall =
      text.size() > kStart.size() + kEnd.size() && text.starts_with(kStart) && text.ends_with(kEnd);
  if (!isCall) Refuse(node.line, "'" + text + "' isn't of the form localize(\"key\")");
  const TzString key = text.substr(kStart.size(), text.size() - kStart.size() - kEnd.size());
  if (dictionary == nullptr) return key;
  if (!dictionary->HasString(key)) {
    Refuse(node.line, "the dictionary has no text for '" + key.GetUTF8String() + "'");
  }
  return dictionary->GetString(key);
}
