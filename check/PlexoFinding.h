// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Everything that the checker and the adopter can find, in the order of its table.
enum class PlexoFindingId {
  ArchiveUnreadable,
  ManifestMissing,
  ManifestInFolder,
  ManifestNameCase,
  EntryNameRefused,
  EntryClash,
  EntryPacking,
  EntryDamaged,
  ArchiveUnpacksHuge,
  EntryCaseTwins,
  EntryNameEncoding,
  EntryBackslash,
  EntryNameOnWindows,
  EntryJunk,

  ManifestTooLarge,
  ManifestIllFormed,
  ManifestInvalid,
  SchemaUnavailable,
  EditionNotValidated,
  SchemaFileMissing,

  RootNotManifest,
  EditionUnknown,
  NamespaceOfOtherEdition,
  NoOrganization,
  OrganizationEmpty,
  TitleMissing,
  ItemWithoutResource,
  ItemWithBoth,
  ResourceWithoutHref,
  ScormTypeMissing,
  ResourceType,
  ResourceUnused,
  LowerCaseLaunchData,
  RepeatedLaunchData,
  NestedManifest,
  TitleEmpty,
  EditionUndetermined,

  ManifestIdentifierDigit,
  IdentifierMalformed,
  IdentifierTwice,
  ItemResourceUnknown,
  DependencyUnknown,
  DefaultOrganizationUnknown,
  SharedSequencingUnknown,

  FileMissing,
  LaunchFileMissing,
  LaunchFileUnlisted,
  FileNameCase,
  FileUnlisted,
  HrefRawCharacters,
  HrefBackslash,
  HrefLeavesPackage,
  HrefExternal,

  ObjectiveUnknown,
  GlobalNeverWritten,
  WeightsDontSum,
  WeightMalformed,
  SequencingOrder,
  FailedPretestOpens,
  FailingOpens,
  ResultTakenBack,
  ScoreDiluted,
  ContentNeverReached,
  CourseNeverCompleted,
  CourseNeverPassed,
  LearnerLost,
  LearnerLostInSession,
  PretestInVain,
  CompletedUnseen,
  ContinueStops,
  StartLaunchesNothing,
  RestartLaunchesNothing,
  FailureSticks,
  SuspensionLoses,
  LearnerLostLater,

  OtherEditionApi,
  NoApi,
  SessionNotEnded,
  AssetUsesApi,
  EndsCourse,
  BookmarkLost,

  PathTooLong,
  IdentifierTooLong,
  TitleTooLong,
  HrefTooLong,
  ParametersTooLong,
  LaunchDataTooLong,
  MetadataTooLong,
  SuspendDataLimited,
  ArchiveTooLarge,

  ForeignFormat,
  SeveralManifests,
  EditionUntold,
  NothingToLaunch,
  SeveralItems,
  ItemUnknown,
  PackagesTooLarge,
  TooManyItems,

  VersionCorrected,

  PrefixRebound,
  BaseResolved,
  ParametersMoved,
  HrefMatched,
  EncodingChanged,
  AttributeTooFar,
  AttributeMissing,
  AddressProtected,
  ParametersDropped,

  ManifestLifted,
  TopFilesMoved,
  SchemaFolderNameTaken,
  FilesListed,
  JunkLeftOut,
  SchemasLeftOut,
  ListedFileAbsent,
  ListedOtherwise,

  ItemsSeparated,
  OtherResourceLaunched,
  OtherTitleRead,
  ItemLeftOut,
  OtherItemsLeftOut,
  SequencingDropped,
  PrerequisitesDropped,
  LimitDropped,
  LaunchDataDropped,
  AssetLaunched,
  MetadataFileAbsent,
  OrganizationsLeftOut,
  TitleSupplied,
  ItemMended,
  DetailDropped,

  LaunchPageAdded,
  CompletionPasses,
  CompletionMayNotPass,
  ReportsNothing,
  LaunchValueReplaced,
  LaunchDataUnread,
  SuccessUncertain,
  SiblingPageLinked,
  PackagesOutgrowSource,
  SiblingLinksDead,
  ObjectivesPreset,

  Count
};

/// Where something was found.
struct PlexoPlace {
  /// The entry of the package; empty for the package as a whole.
  std::string file;
  /// From 1 on; 0 where there is none.
  int line = 0;
  /// An element of the manifest: "/manifest/organizations/organization[2]". The number counts siblings of one
  /// name.
  std::string element;
};

/// One thing that was found.
struct PlexoFinding {
  PlexoFindingId id = PlexoFindingId::Count;
  PlexoPlace place;
  /// What stands in the braces of the table's text.
  std::vector<std::string> words;
  /// A script for `plexo play` that shows it; empty for what doesn't come of playing the course.
  std::string witness;
};
