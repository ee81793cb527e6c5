// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QStringList>

/// Several messages in one box, to be read and closed.
class MessageListDialog : public QDialog {
 public:
  MessageListDialog(QWidget* parent, const QString& caption, const QStringList& messages,
                    const QString& okWord);
};
