// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzPropertySheet.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <string_view>

#include "host/sheets/TzSheetText.h"

namespace {

/// Fills a property sheet from its text.
class PropertySheetReader {
 public:
  PropertySheetReader(const TzResource& resource, const ITzStringDictionary* words) : text(resource, words) {
    sheet.file = resource.file;
  }

  TzPropertySheet Read() {
    const TzSheetNode& root = text.GetRoot();
    RequireKnownKeys(root, {"sheet", "interface", "logic", "invariants", "output"});
    sheet.name = text.ReadWord(text.Require(root, "sheet", TzSheetNode::Kind::Scalar));
    const TzSheetNode& cells = text.Require(root, "interface", TzSheetNode::Kind::List);
    for (const TzSheetNode& cell : cells.items) ReadInterfaceCell(cell);
    for (const char* section : {"logic", "invariants"}) {
      for (const TzSheetNode& rule : ItemsOf(section)) ReadRule(rule);
    }
    for (const TzSheetNode& output : ItemsOf("output")) ReadOutput(output);
    return std::move(sheet);
  }

 private:
  const std::vector<TzSheetNode>& ItemsOf(const char* section) {
    static const std::vector<TzSheetNode> none;
    if (text.GetRoot().Find(section) == nullptr) return none;
    return text.Require(text.GetRoot(), section, TzSheetNode::Kind::List).items;
  }

  void RequireKnownKeys(const TzSheetNode& map, const std::set<std::string_view>& known) const {
    if (map.kind != TzSheetNode::Kind::Map) text.Refuse(map.line, "expected keys with values");
    for (const auto& [key, line, value] : map.entries) {
      if (!known.contains(key)) text.Refuse(line, "there is no key '" + key + "' here");
    }
  }

  void AddCell(const TzPropertyCell& cell, int line) {
    if (sheet.Find(cell.name) != nullptr)
      text.Refuse(line, "cell '" + cell.name.GetUTF8String() + "' stands here twice");
    sheet.cells.push_back(cell);
  }

  void RequireCell(const std::string& name, int line) const {
    if (sheet.Find(name) == nullptr) text.Refuse(line, "there is no cell '" + name + "' above");
  }

  void ReadInterfaceCell(const TzSheetNode& node) {
    RequireKnownKeys(node, {"cell", "default", "unlink"});
    const std::string name = text.ReadWord(text.Require(node, "cell", TzSheetNode::Kind::Scalar));
    const TzSheetNode* initial = node.Find("default");
    if (initial == nullptr) text.Refuse(node.line, "cell '" + name + "' has no default");
    const TzVariant value = text.ReadValue(*initial);
    TzPropertyCell definition{.name = name, .initial = value};
    if (const TzSheetNode* relation = node.Find("unlink"); relation != nullptr) {
      definition.unlink = ReadUnlink(*relation, definition);
    }
    AddCell(definition, node.line);
  }

  /// SWITCH ? CELL : FALLBACK
  TzUnlinkRelation ReadUnlink(const TzSheetNode& node, const TzPropertyCell& cell) const {
    const std::vector<std::string> words = Split(node);
    const bool isRelation =
        words.size() == 5 && words[1] == "?" && TzString(words[2]) == cell.name && words[3] == ":";
    if (!isRelation) {
      text.Refuse(node.line, "'" + node.text + "' isn't of the form 'switch ? " + cell.name.GetUTF8String() +
                                 " : fallback'");
    }
    RequireCell(words[0], node.line);
    if (sheet.Find(words[0])->initial.GetKind() != TzVariant::Kind::Bool)
      text.Refuse(node.line, "'" + words[0] + "' isn't a switch: it isn't true or false");
    const TzVariant fallback = ReadLiteral(words[4], node.line);
    if (fallback.GetKind() != cell.initial.GetKind())
      text.Refuse(node.line, "the fallback is of another kind than the default");
    return {words[0], fallback};
  }

  /// NAME <== CELL, or NAME <== CELL == VALUE
  void ReadRule(const TzSheetNode& node) {
    const std::vector<std::string> words = Split(node);
    const bool isCopy = words.size() == 3 && words[1] == "<==";
    const bool isTest = words.size() == 5 && words[1] == "<==" && words[3] == "==";
    if (!isCopy && !isTest) {
      text.Refuse(node.line,
                  "'" + node.text + "' isn't of the form 'name <== cell' or 'name <== cell == value'");
    }
    RequireCell(words[2], node.line);
    TzDerivation derivation;
    derivation.source = words[2];
    if (isTest) derivation.equals = ReadLiteral(words[4], node.line);
    const TzVariant initial = isTest ? TzVariant(false) : sheet.Find(words[2])->initial;
    AddCell({.name = words[0], .initial = initial, .derivation = derivation}, node.line);
  }

  void ReadOutput(const TzSheetNode& node) {
    RequireKnownKeys(node, {"cell", "dictionary"});
    const std::string name = text.ReadWord(text.Require(node, "cell", TzSheetNode::Kind::Scalar));
    std::vector<TzString> members;
    for (const TzSheetNode& member : text.Require(node, "dictionary", TzSheetNode::Kind::List).items) {
      RequireCell(text.ReadWord(member), member.line);
      members.emplace_back(member.text);
    }
    if (members.empty()) text.Refuse(node.line, "the dictionary of cell '" + name + "' is empty");
    AddCell({.name = name, .initial = TzVariant::Dictionary(), .members = std::move(members)}, node.line);
  }

  /// At blanks: no literal of a relation holds any.
  [[nodiscard]] std::vector<std::string> Split(const TzSheetNode& node) const {
    if (node.kind != TzSheetNode::Kind::Scalar) text.Refuse(node.line, "expected a relation");
    std::istringstream stream(node.text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
  }

  [[nodiscard]] TzVariant ReadLiteral(const std::string& word, int line) const {
    TzSheetNode node;
    node.kind = TzSheetNode::Kind::Scalar;
    node.line = line;
    node.isQuoted = word.size() >= 2 && word.front() == '"' && word.back() == '"';
    node.text = node.isQuoted ? word.substr(1, word.size() - 2) : word;
    return text.ReadValue(node);
  }

  TzSheetText text;
  TzPropertySheet sheet;
};

}  // namespace

TzPropertySheet TzPropertySheet::Read(const TzResource& text, const ITzStringDictionary* words) {
  return PropertySheetReader(text, words).Read();
}

const TzPropertyCell* TzPropertySheet::Find(const TzString& cell) const {
  const auto found = std::ranges::find(cells, cell, &TzPropertyCell::name);
  return found != cells.end() ? &*found : nullptr;
}
