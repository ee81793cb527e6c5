// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

#include "host/kelpui/UI_Node.h"
#include "host/qt/TzQtLayout.h"

/// A node on the screen: a widget that shows the node's state and enters into the node what a person does.
/// It keeps nothing of its own that the node doesn't have.
///
/// Mirrors hold their nodes, and so do the slots of their widgets: whatever the handler of a press does to
/// the canvas, the node outlives the press.
class TzQtMirror {
 public:
  /// The widget goes with the mirror, when the running event has ended.
  virtual ~TzQtMirror();
  TzQtMirror(const TzQtMirror&) = delete;
  TzQtMirror& operator=(const TzQtMirror&) = delete;

  [[nodiscard]] kelpui::controls::UI_Node& GetNode() const { return *ownNode; }
  /// Null when the widget's window has gone.
  [[nodiscard]] QWidget* GetWidget() const { return ownWidget; }

  /// Shows the node's state.
  virtual void Refresh();
  [[nodiscard]] virtual TzQtRoom Measure() const;
  /// In the parent widget.
  virtual void Place(const QRect& area) { ownWidget->setGeometry(area); }
  /// What a person tabs to; null if there is nothing.
  [[nodiscard]] virtual QWidget* GetFocusWidget() const { return ownWidget; }

  /// The text that can bear a mnemonic; empty without one.
  [[nodiscard]] virtual QString GetCaption() const { return {}; }
  /// The place of the mnemonic's letter in the caption, or -1.
  void SetMnemonic(qsizetype place);

  /// For a node that has none of its own.
  void SetTooltip(TzString text) { givenTooltip = std::move(text); }

  /// The width that the text of a label in front wants; 0 without one.
  [[nodiscard]] virtual int GetLabelWidth() const { return 0; }
  /// The text starts behind the indent, which is part of the width.
  virtual void SetLabelWidth(int /*width*/, int /*indent*/) {}

 protected:
  TzQtMirror(kelpui::controls::UI_Node& mirrored, QWidget* shown);

  [[nodiscard]] QString GetTooltip() const;
  [[nodiscard]] qsizetype GetMnemonic() const { return mnemonicPlace; }
  /// What those hear who don't see, where the widget doesn't say it by itself.
  void SetAccessibleName(QWidget& named) const;

 private:
  kelpui::controls::UI_NodePtr ownNode;
  QPointer<QWidget> ownWidget;
  TzString givenTooltip;
  qsizetype mnemonicPlace = -1;
};

/// Size, weight and tooltip that the node's sheet tells.
void ApplyTzPresentation(const kelpui::controls::UI_Node& node, QWidget& widget);
