// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfNameTree.h"

#include <algorithm>
#include <vector>

#include "host/pdf/TzPdfFailure.h"

namespace {

/// Sound trees have a handful of levels; one that goes on and on leads back to itself.
constexpr std::size_t kMostLevels = 100;

/// The kid in which the key has its place: the last that starts at the key or before it, else the first.
TzPdfObject ChooseKid(const TzPdfObject& kids, const std::string& key) {
  TzPdfObject chosen = kids.At(0);
  for (std::size_t index = 1; index < kids.GetCount(); ++index) {
    const TzPdfObject kid = kids.At(index);
    const TzPdfObject lowest = kid.Get("Limits").At(0);
    if (lowest.IsString() && lowest.GetBytes() <= key) chosen = kid;
  }
  return chosen;
}

/// The way from the root to the leaf in which the key has its place.
std::vector<TzPdfObject> FindWay(const TzPdfObject& root, const std::string& key) {
  std::vector<TzPdfObject> way = {root};
  while (way.back().Get("Kids").GetCount() > 0) {
    if (way.size() == kMostLevels) throw TzPdfFailure("a names tree has no end");
    way.push_back(ChooseKid(way.back().Get("Kids"), key));
    if (!way.back().IsDictionary()) throw TzPdfFailure("a names tree has a branch that is no node");
  }
  return way;
}

void PutInLeaf(TzPdfObject leaf, const std::string& key, const TzPdfObject& value) {
  if (!leaf.Get("Names").IsArray()) leaf.Set("Names", TzPdfObject::NewArray());
  TzPdfObject names = leaf.Get("Names");
  std::size_t index = 0;
  for (; index + 1 < names.GetCount(); index += 2) {
    const std::string each = names.At(index).GetBytes();
    if (each == key) return names.Replace(index + 1, value);
    if (each > key) break;
  }
  names.Insert(index, TzPdfObject::NewString(key));
  names.Insert(index + 1, value);
}

void WidenLimits(TzPdfObject node, const std::string& key) {
  const TzPdfObject old = node.Get("Limits");
  std::string lowest = key;
  std::string highest = key;
  if (old.At(0).IsString() && old.At(1).IsString()) {
    lowest = std::min(lowest, old.At(0).GetBytes());
    highest = std::max(highest, old.At(1).GetBytes());
  }
  TzPdfObject limits = TzPdfObject::NewArray();
  limits.Append(TzPdfObject::NewString(lowest));
  limits.Append(TzPdfObject::NewString(highest));
  node.Set("Limits", limits);
}

}  // namespace

TzPdfNameTree TzPdfNameTree::Find(const TzPdfDocument& document, std::string_view name) {
  return TzPdfNameTree(document.GetCatalog().Get("Names").Get(name));
}

TzPdfNameTree TzPdfNameTree::Create(TzPdfDocument& document, std::string_view name) {
  TzPdfObject catalog = document.GetCatalog();
  if (!catalog.Get("Names").IsDictionary()) catalog.Set("Names", TzPdfObject::NewDictionary());
  TzPdfObject tree = document.NewIndirect(TzPdfObject::NewDictionary());
  tree.Set("Names", TzPdfObject::NewArray());
  catalog.Get("Names").Set(name, tree);
  return TzPdfNameTree(tree);
}

void TzPdfNameTree::Put(const std::string& key, const TzPdfObject& value) {
  if (!IsValid() || value.IsNull()) throw TzPdfFailure("nothing can be put into a names tree");
  const std::vector<TzPdfObject> way = FindWay(root, key);
  PutInLeaf(way.back(), key, value);
  // The root has no limits.
  for (std::size_t level = 1; level < way.size(); ++level) WidenLimits(way[level], key);
}
