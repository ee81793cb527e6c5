// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/CourseHints.h"

#include "apps/desktop/PanelGlance.h"

using kelpui::controls::UI_NodePtr;

void CourseHints::Refresh() {
  const CourseScreen& screen = session.GetScreen();
  window.ShowHint(screen.GetTemplate() ? QString() : session.GetWord("kDesktopFirstSteps"));
  const TzCanvas* panel = screen.GetPanel();
  QWidget* dock = panel != nullptr ? session.GetWindows().FindWidget(panel->GetSpec().parent) : nullptr;
  if (dock != nullptr) RefreshDropFiles(*dock);
}

QLabel& CourseHints::GetDropFiles(QWidget& dock) {
  if (dropFiles != nullptr) return *dropFiles;
  dropFiles = new QLabel(session.GetWord("kDesktopDropFiles"), &dock);
  dropFiles->setTextFormat(Qt::PlainText);
  dropFiles->setWordWrap(true);
  dropFiles->setAlignment(Qt::AlignCenter);
  dropFiles->setForegroundRole(QPalette::PlaceholderText);
  // As the list that will be there.
  dropFiles->setFrameStyle(int{QFrame::StyledPanel} | int{QFrame::Sunken});
  dropFiles->setBackgroundRole(QPalette::Base);
  dropFiles->setAutoFillBackground(true);
  // Whatever is under it is the panel's.
  dropFiles->setAttribute(Qt::WA_TransparentForMouseEvents);
  dropFiles->hide();
  return *dropFiles;
}

void CourseHints::RefreshDropFiles(QWidget& dock) {
  QLabel& label = GetDropFiles(dock);
  const UI_NodePtr list = FindFlatList(session.GetScreen());
  const CourseScreen::Tree* tree = session.GetScreen().GetTree();
  if (list == nullptr || (tree != nullptr && tree->CountRows() > 0)) {
    label.hide();
    return;
  }
  const QRect area = GetPlaceOnCanvas(*list);
  if (label.geometry() != area) label.setGeometry(area);
  if (!label.isHidden()) return;
  label.raise();
  label.show();
}
