// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtMirror.h"

#include "host/kelpui/UI_PictureButton.h"
#include "host/qt/TzQtText.h"

using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;
using kelpui::controls::UI_PictureButton;
using kelpui::controls::UI_Presentation;

namespace {

QString GetImageWord(const UI_Node& node) {
  const auto* button = dynamic_cast<const UI_PictureButton*>(&node);
  return button != nullptr ? ToQtText(button->GetImage().name).section(QLatin1Char('.'), 0, 0) : QString();
}

/// The text that stands beside the node, before it.
QString GetTextInFront(const UI_Node& node) {
  QString text;
  if (node.GetParent() == nullptr) return text;
  for (const UI_NodePtr& each : node.GetParent()->GetChildren()) {
    if (each.get() == &node) break;
    text = each->GetKind() == UI_NodeKind::StaticText ? ToShownText(each->GetName()) : QString();
  }
  return text;
}

}  // namespace

TzQtMirror::TzQtMirror(UI_Node& mirrored, QWidget* shown) : ownNode(&mirrored), ownWidget(shown) {
  ApplyTzPresentation(mirrored, *shown);
}

TzQtMirror::~TzQtMirror() {
  if (ownWidget == nullptr) return;
  ownWidget->hide();
  ownWidget->deleteLater();
}

void TzQtMirror::Refresh() {
  ownWidget->setEnabled(ownNode->IsEnabled());
  ownWidget->setToolTip(GetTooltip());
}

QString TzQtMirror::GetTooltip() const {
  return ToShownText(ownNode->GetTooltip().IsEmpty() ? givenTooltip : ownNode->GetTooltip());
}

TzQtRoom TzQtMirror::Measure() const { return {ownWidget->minimumSizeHint(), ownWidget->sizeHint()}; }

void TzQtMirror::SetMnemonic(qsizetype place) {
  if (mnemonicPlace == place) return;
  mnemonicPlace = place;
  Refresh();
}

void TzQtMirror::SetAccessibleName(QWidget& named) const {
  for (const QString& word : {GetTooltip(), ToShownText(ownNode->GetName()), GetTextInFront(*ownNode),
                              ToQtText(ownNode->GetIdentifier()), GetImageWord(*ownNode)}) {
    if (word.isEmpty()) continue;
    named.setAccessibleName(word);
    return;
  }
}

void ApplyTzPresentation(const UI_Node& node, QWidget& widget) {
  const UI_Presentation& look = node.GetPresentation();
  if (!look.fontSize && !look.bold) return;
  QFont font = widget.font();
  if (look.fontSize) font.setPointSize(*look.fontSize);
  if (look.bold) font.setBold(*look.bold);
  widget.setFont(font);
}
