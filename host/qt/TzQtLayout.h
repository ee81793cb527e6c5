// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>
#include <unordered_map>
#include <vector>

#include "host/kelpui/UI_Node.h"

/// How much room something wants.
struct TzQtRoom {
  QSize minimum;
  QSize preferred;
};

/// What a layout asks those who draw.
class ITzQtMeasures {
 public:
  virtual ~ITzQtMeasures() = default;
  /// Of a node without children of its own in the layout: a control, a text, a sub-view. A label beside the
  /// control has the width that was given last.
  [[nodiscard]] virtual TzQtRoom MeasureNode(const kelpui::controls::UI_Node& node) const = 0;
  /// What the frame of a box (a group) takes on each side.
  [[nodiscard]] virtual QMargins GetFrameMargins(const kelpui::controls::UI_Node& box) const = 0;
  /// The width that the text of the label in front of a field takes; 0 without one.
  [[nodiscard]] virtual int GetLabelWidth(const kelpui::controls::UI_Node& node) const = 0;
  /// The label's text starts behind the indent, which is part of the width.
  virtual void SetLabelWidth(const kelpui::controls::UI_Node& node, int width, int indent) = 0;
  /// Between the children of a box that doesn't say.
  [[nodiscard]] virtual int GetSpacing() const = 0;
};

/// Lays out the nodes of a layout sheet.
///
/// A box stands its children side by side (a row, or by its placement) or one below the other, in its margin,
/// at its spacing. In each direction a child has the alignment that it tells itself, else the one that its
/// box tells for its children. Filling children share the room that is left; without any, those to the right
/// or the bottom are moved there. A box whose sheet says nothing fills if something in it does. Where the
/// room is too small, all give way towards their least size, as evenly as that goes. A size that a control's
/// sheet tells is kept, also by a filling one. Hidden nodes take no room.
///
/// In a group the fields stand in one column: each label in front of them is as wide as the widest wants, and
/// labels behind check boxes of their rows start in one column too.
///
/// From right to left, all is mirrored; the frames are from the left as always.
class TzQtLayout {
 public:
  TzQtLayout(ITzQtMeasures& measuresOfNodes, Qt::LayoutDirection layoutDirection)
      : measures(measuresOfNodes), direction(layoutDirection) {}

  /// Has to come before `Place`.
  TzQtRoom Measure(const kelpui::controls::UI_Node& root);
  /// Gives all shown nodes below the root their frames. Who hears of them may change the nodes.
  void Place(kelpui::controls::UI_Node& root, const QSize& size);

 private:
  using Node = kelpui::controls::UI_Node;
  enum class Axis { Horizontal, Vertical };

  struct Need {
    int minimum = 0;
    int preferred = 0;
    /// Something in it takes more room if there is some.
    bool wantsMore = false;
  };
  struct Needs {
    Need horizontal;
    Need vertical;
    [[nodiscard]] const Need& Along(Axis axis) const {
      return axis == Axis::Horizontal ? horizontal : vertical;
    }
  };
  /// A child's place along one axis.
  struct Span {
    int start = 0;
    int length = 0;
  };

  static bool IsBox(const Node& node);
  static Axis GetAxis(const Node& box);
  static kelpui::controls::UI_Align GetAlign(const Node& child, Axis axis);
  [[nodiscard]] bool Fills(const Node& child, Axis axis) const;
  [[nodiscard]] int GetSpacing(const Node& box) const;
  [[nodiscard]] QMargins GetMargins(const Node& box) const;

  const Needs& MeasureNeeds(const Node& node);
  Needs MeasureLeaf(const Node& node) const;
  Needs MeasureBox(const Node& box);
  void AlignLabels(const Node& group);

  void PlaceChildren(Node& box);
  [[nodiscard]] std::vector<Span> Distribute(const Node& box, const std::vector<Node*>& children,
                                             int available) const;
  /// Takes what is missing off those that have more than their least, as evenly as that goes.
  void Shrink(const std::vector<Node*>& children, Axis axis, int missing, std::vector<Span>& spans) const;
  [[nodiscard]] Span PlaceAcross(const Node& box, const Node& child, int available) const;

  ITzQtMeasures& measures;
  Qt::LayoutDirection direction;
  std::unordered_map<const Node*, Needs> needs;
};
