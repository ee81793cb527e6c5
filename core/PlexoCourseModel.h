// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/PlexoCourseType.h"
#include "core/PlexoSCOManifestList.h"
#include "host/files/TzPath.h"

/// The scripts that make a PDF document report to the LMS.
enum class PlexoTrackingScript { OtherPages, FirstPage, DocumentLevel };

/// What belongs to the course as a whole, whatever its template, and the folders that it uses.
///
/// Getters copy; a change goes through a setter. The working folder is a temporary folder: it lives from the
/// creation of the model to the host's removal of temporary files. Everything here is for the UI thread only.
class PlexoCourseModel {
 public:
  /// Makes the working folder; `GetCourseModel` is the usual way to one.
  PlexoCourseModel();

  [[nodiscard]] PlexoCourseType GetCourseType() const { return courseType; }
  void SetCourseType(PlexoCourseType type) { courseType = type; }

  /// "1.2" or "2004"; no other value is stored.
  [[nodiscard]] TzString GetScormVersion() const { return scormVersion; }
  void SetScormVersion(const TzString& value) { scormVersion = value; }
  /// The manifest's identifier: letters, digits and underscores.
  [[nodiscard]] TzString GetCourseIdentifier() const { return courseIdentifier; }
  void SetCourseIdentifier(const TzString& value) { courseIdentifier = value; }
  [[nodiscard]] TzString GetCourseTitle() const { return courseTitle; }
  void SetCourseTitle(const TzString& value) { courseTitle = value; }
  [[nodiscard]] TzString GetCourseDescription() const { return courseDescription; }
  void SetCourseDescription(const TzString& value) { courseDescription = value; }
  [[nodiscard]] TzString GetCourseVersion() const { return courseVersion; }
  void SetCourseVersion(const TzString& value) { courseVersion = value; }
  /// "hh:mm:ss"
  [[nodiscard]] TzString GetCourseDuration() const { return courseDuration; }
  void SetCourseDuration(const TzString& value) { courseDuration = value; }
  [[nodiscard]] TzString GetCourseSubject() const { return courseSubject; }
  void SetCourseSubject(const TzString& value) { courseSubject = value; }
  /// File name of the package.
  [[nodiscard]] TzString GetPackageName() const { return packageName; }
  void SetPackageName(const TzString& value) { packageName = value; }
  /// Each says that the detail of its name is published.
  [[nodiscard]] bool GetEnableCourseVersion() const { return enableCourseVersion; }
  void SetEnableCourseVersion(bool value) { enableCourseVersion = value; }
  [[nodiscard]] bool GetEnableCourseDuration() const { return enableCourseDuration; }
  void SetEnableCourseDuration(bool value) { enableCourseDuration = value; }
  [[nodiscard]] bool GetEnableCourseSubject() const { return enableCourseSubject; }
  void SetEnableCourseSubject(bool value) { enableCourseSubject = value; }

  /// The course holds work that the last package doesn't show.
  [[nodiscard]] bool GetIsDirty() const { return isDirty; }
  void SetIsDirty(bool value) { isDirty = value; }
  /// The course's details have been confirmed since the course began.
  [[nodiscard]] bool GetManifestDetailsEdited() const { return manifestDetailsEdited; }
  void SetManifestDetailsEdited(bool value) { manifestDetailsEdited = value; }
  /// PDF and SWF files may be added beside SCO packages.
  [[nodiscard]] bool GetAllowWrappedContent() const { return allowWrappedContent; }
  void SetAllowWrappedContent(bool value) { allowWrappedContent = value; }

  /// Where the file chooser opens.
  [[nodiscard]] TzPath GetLastBrowseFolder() const { return lastBrowseFolder; }
  void SetLastBrowseFolder(const TzPath& value) { lastBrowseFolder = value; }
  /// Where the package goes. Need not exist.
  [[nodiscard]] TzPath GetPublishFolder() const { return publishFolder; }
  void SetPublishFolder(const TzPath& value) { publishFolder = value; }
  /// Root of everything staged; what stands in it becomes the package.
  [[nodiscard]] TzPath GetWorkingFolder() const { return workingFolder; }

  /// Appends a copy and marks the course dirty.
  void AddSCOManifest(const PlexoSCOManifest& manifest);
  /// Erases the first entry with this folder path, if there is one, in about the logarithm of their number.
  void RemoveSCOManifest(const TzString& folderPath);
  /// A default record for an index out of range.
  [[nodiscard]] PlexoSCOManifest GetSCOManifest(std::size_t index) const;
  [[nodiscard]] std::size_t GetSCOManifestCount() const { return scoManifests.Count(); }
  /// The whole list; setting it doesn't touch the dirty mark.
  [[nodiscard]] std::vector<PlexoSCOManifest> GetSCOManifests() const { return scoManifests.GetAll(); }
  void SetSCOManifests(const std::vector<PlexoSCOManifest>& manifests);

  /// Names of the published schema files and folders that a package of each version carries; "" for an index
  /// out of range.
  [[nodiscard]] TzString GetScorm12SchemaFile(std::size_t index) const;
  [[nodiscard]] std::size_t GetScorm12SchemaFileCount() const;
  [[nodiscard]] TzString GetScorm2004SchemaFile(std::size_t index) const;
  [[nodiscard]] std::size_t GetScorm2004SchemaFileCount() const;
  [[nodiscard]] TzString GetScorm2004SchemaFolder(std::size_t index) const;
  [[nodiscard]] std::size_t GetScorm2004SchemaFolderCount() const;

  /// Starts the course on an empty working folder with version "2004" and the published details off but for
  /// the version. Identifier, title, description, duration, subject, package name and the other folders stay.
  /// A working folder that can't be emptied keeps what couldn't be deleted; the rest happens all the same.
  void ResetManifestDetails();

  /// `courseDuration` as a period of ISO 8601 in hours and minutes ("PT1H30M"), the seconds dropped; "PT0H0M"
  /// for a text that isn't 8 characters long.
  [[nodiscard]] TzString GetDurationPeriod() const;

  /// Folder of the installed tracking scripts.
  [[nodiscard]] TzPath GetPdfTrackingFolder() const;
  /// The script's text, read on first use and kept. Null if it can't be read; the next call tries again.
  const std::string* GetTrackingScript(PlexoTrackingScript script);

 private:
  PlexoCourseType courseType = PlexoCourseType::LINEAR;
  TzString scormVersion = "2004";
  TzString courseIdentifier;
  TzString courseTitle;
  TzString courseDescription;
  TzString courseVersion;
  TzString courseDuration;
  TzString courseSubject;
  TzString packageName;
  bool enableCourseVersion = true;
  bool enableCourseDuration = false;
  bool enableCourseSubject = false;
  PlexoSCOManifestList scoManifests;
  TzPath lastBrowseFolder;
  TzPath publishFolder;
  TzPath workingFolder;
  bool isDirty = false;
  bool manifestDetailsEdited = false;
  bool allowWrappedContent = true;
  std::array<std::optional<std::string>, 3> trackingScripts;
};

/// The process's course, made on first use and never destroyed. Null only without memory. UI thread only.
PlexoCourseModel* GetCourseModel();
