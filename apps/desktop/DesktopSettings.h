// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QStringList>

/// What the program remembers between its runs. A value that nobody has set is empty.
class DesktopSettings {
 public:
  /// Whose folder was used last.
  enum class Folder { Files, Packages, Courses };

  explicit DesktopSettings(const QString& file) : settings(file, QSettings::IniFormat) {}

  /// "de"; empty for the system's.
  [[nodiscard]] QString GetLanguage() const;
  void SetLanguage(const QString& language);
  /// "light", "dark"; empty for the system's.
  [[nodiscard]] QString GetPalette() const;
  void SetPalette(const QString& palette);
  /// As `QWidget::saveGeometry` gives it.
  [[nodiscard]] QByteArray GetGeometry() const;
  void SetGeometry(const QByteArray& geometry);

  /// Course files, the latest in front; a few at most.
  [[nodiscard]] QStringList GetRecentCourses() const;
  void AddRecentCourse(const QString& file);
  void RemoveRecentCourse(const QString& file);

  /// Empty if there is none, or it has gone.
  [[nodiscard]] QString GetFolder(Folder use) const;
  void SetFolder(Folder use, const QString& folder);

 private:
  QSettings settings;
};
