// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/MessageListDialog.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

MessageListDialog::MessageListDialog(QWidget* parent, const QString& caption, const QStringList& messages,
                                     const QString& okWord)
    : QDialog(parent) {
  constexpr QSize kSize(560, 300);
  setWindowTitle(QGuiApplication::applicationDisplayName());
  auto* heading = new QLabel(caption, this);
  heading->setTextFormat(Qt::PlainText);
  heading->setWordWrap(true);
  auto* list = new QListWidget(this);
  list->addItems(messages);
  list->setWordWrap(true);
  list->setTextElideMode(Qt::ElideNone);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setAccessibleName(caption);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->button(QDialogButtonBox::Ok)->setText(okWord);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading);
  layout->addWidget(list);
  layout->addWidget(buttons);
  resize(kSize);
}
