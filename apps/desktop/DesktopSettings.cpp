// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopSettings.h"

#include <QDir>

namespace {

constexpr qsizetype kMostRecentCourses = 8;

constexpr const char* kLanguage = "language";
constexpr const char* kPalette = "palette";
constexpr const char* kGeometry = "geometry";
constexpr const char* kRecentCourses = "recentCourses";

QString GetFolderKey(DesktopSettings::Folder use) {
  switch (use) {
    case DesktopSettings::Folder::Files:
      return QStringLiteral("folders/files");
    case DesktopSettings::Folder::Packages:
      return QStringLiteral("folders/packages");
    case DesktopSettings::Folder::Courses:
      break;
  }
  return QStringLiteral("folders/courses");
}

}  // namespace

QString DesktopSettings::GetLanguage() const { return settings.value(kLanguage).toString(); }

void DesktopSettings::SetLanguage(const QString& language) { settings.setValue(kLanguage, language); }

QString DesktopSettings::GetPalette() const { return settings.value(kPalette).toString(); }

void DesktopSettings::SetPalette(const QString& palette) { settings.setValue(kPalette, palette); }

QByteArray DesktopSettings::GetGeometry() const { return settings.value(kGeometry).toByteArray(); }

void DesktopSettings::SetGeometry(const QByteArray& geometry) { settings.setValue(kGeometry, geometry); }

QStringList DesktopSettings::GetRecentCourses() const {
  // Somebody may have edited the file.
  return settings.value(kRecentCourses).toStringList().mid(0, kMostRecentCourses);
}

void DesktopSettings::AddRecentCourse(const QString& file) {
  QStringList files = GetRecentCourses();
  files.removeAll(file);
  files.prepend(file);
  settings.setValue(kRecentCourses, files.mid(0, kMostRecentCourses));
}

void DesktopSettings::RemoveRecentCourse(const QString& file) {
  QStringList files = GetRecentCourses();
  files.removeAll(file);
  settings.setValue(kRecentCourses, files);
}

QString DesktopSettings::GetFolder(Folder use) const {
  const QString folder = settings.value(GetFolderKey(use)).toString();
  return folder.isEmpty() || !QDir(folder).exists() ? QString() : folder;
}

void DesktopSettings::SetFolder(Folder use, const QString& folder) {
  settings.setValue(GetFolderKey(use), folder);
}
