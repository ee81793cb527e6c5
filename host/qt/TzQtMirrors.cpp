// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtMirrors.h"

#include "host/kelpui/UI_MultiColumnTree.h"
#include "host/qt/TzQtControls.h"
#include "host/qt/TzQtFields.h"
#include "host/qt/TzQtTree.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

using kelpui::controls::UI_MultiColumnTree;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;

TzQtMirror* TzQtMirrors::Find(const Node& node) const {
  const auto found = mirrors.find(&node);
  return found != mirrors.end() ? found->second.get() : nullptr;
}

std::unique_ptr<TzQtMirror> TzQtMirrors::Make(Node& node, QWidget& parent) {
  if (auto* tree = dynamic_cast<UI_MultiColumnTree*>(&node)) {
    return std::make_unique<TzQtTree>(*tree, &parent);
  }
  if (auto field = MakeTzField(node, &parent)) return field;
  return MakeTzControl(node, &parent);
}

TzString TzQtMirrors::FindTooltip(const Node& node) const {
  const ITzStringDictionary* words = GetStringDictionary();
  if (tooltipKeys == nullptr || words == nullptr) return {};
  const bool isInPlace = node.GetKind() == UI_NodeKind::Tree && node.GetParent() != nullptr;
  const auto key = tooltipKeys->find((isInPlace ? *node.GetParent() : node).GetIdentifier());
  return key != tooltipKeys->end() ? words->GetString(key->second) : TzString();
}

void TzQtMirrors::MakeBelow(Node& node, QWidget& widget) {  // NOLINT(misc-no-recursion)
  for (const UI_NodePtr& child : node.GetChildren()) {
    TzQtMirror* mirror = Find(*child);
    if (mirror == nullptr) {
      if (auto made = Make(*child, widget)) {
        mirror = made.get();
        mirrors[child.get()] = std::move(made);
        mirror->SetTooltip(FindTooltip(*child));
        mirror->Refresh();
        // A widget that comes into one that is shown stays hidden otherwise.
        mirror->GetWidget()->setVisible(child->IsShown());
      }
    }
    MakeBelow(*child, mirror != nullptr ? *mirror->GetWidget() : widget);
  }
}

void TzQtMirrors::DropBelow(const Node& node) {  // NOLINT(misc-no-recursion)
  for (const UI_NodePtr& child : node.GetChildren()) {
    DropBelow(*child);
    mirrors.erase(child.get());
  }
}

void TzQtMirrors::DropStrays(const Node& root) {
  std::erase_if(mirrors, [&](const auto& each) { return !IsTzNodeBelow(*each.first, root); });
}

bool IsTzNodeBelow(const UI_Node& node, const UI_Node& root) {
  const UI_Node* each = &node;
  while (each != nullptr && each != &root) each = each->GetParent();
  return each != nullptr;
}
