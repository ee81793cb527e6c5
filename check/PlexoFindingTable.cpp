// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoFindingTable.h"

#include <array>
#include <cstddef>

namespace {

using enum PlexoFindingId;
constexpr auto kError = PlexoSeverity::Error;
constexpr auto kWarning = PlexoSeverity::Warning;
constexpr auto kHint = PlexoSeverity::Hint;

// What a script reports is found by looking for words in it, so that these texts say "as far as its scripts
// show".
constexpr std::array kKinds = {
    PlexoFindingKind{ArchiveUnreadable, "PLX-001", kError, "The package can't be read as a ZIP archive",
                     "the package: {0}", "pack the course again as a plain ZIP archive"},
    PlexoFindingKind{ManifestMissing, "PLX-002", kError, "There is no imsmanifest.xml",
                     "the package: holds no 'imsmanifest.xml'", "add the manifest at the top of the package"},
    PlexoFindingKind{ManifestInFolder, "PLX-003", kError, "The manifest isn't at the top of the package",
                     "'{0}': an LMS looks for the manifest at the top of the package only",
                     "pack what is in the folder, not the folder itself"},
    PlexoFindingKind{ManifestNameCase, "PLX-004", kError, "The manifest's name is written in another case",
                     "'{0}': the manifest's name must be 'imsmanifest.xml', in lower case", "rename it"},
    PlexoFindingKind{EntryNameRefused, "PLX-005", kError, "An entry's name is unsafe", "'{0}': {1}",
                     "rename the file and pack the course again"},
    PlexoFindingKind{EntryClash, "PLX-006", kError, "Two entries can't both be unpacked", "'{0}': {1}",
                     "remove one of them"},
    PlexoFindingKind{EntryPacking, "PLX-007", kError, "An entry can't be unpacked everywhere", "'{0}': {1}",
                     "pack the course again with plain files, without a password, stored or deflated"},
    PlexoFindingKind{EntryDamaged, "PLX-008", kError, "An entry is damaged", "'{0}': {1}",
                     "pack the course again, and check how the package was transferred"},
    PlexoFindingKind{ArchiveUnpacksHuge, "PLX-009", kError, "The package unpacks to far more than its size",
                     "the package: {0}", "remove what the course doesn't need"},
    PlexoFindingKind{EntryCaseTwins, "PLX-010", kWarning, "Two names differ in case only",
                     "'{0}': differs from '{1}' in case only, so one replaces the other on some servers",
                     "rename one of them"},
    PlexoFindingKind{EntryNameEncoding, "PLX-011", kWarning, "A name beyond ASCII isn't marked as UTF-8",
                     "'{0}': its name isn't marked as UTF-8, so an LMS may unpack it under another",
                     "use names in ASCII, or a packer that writes UTF-8 names"},
    PlexoFindingKind{EntryBackslash, "PLX-012", kWarning, "A name is written with back-slashes",
                     "'{0}': written with back-slashes, which some servers take as part of the name",
                     "use a packer that writes slashes"},
    PlexoFindingKind{EntryNameOnWindows, "PLX-013", kWarning, "A name can't be used on Windows",
                     "'{0}': a server on Windows can't store a name {1}", "rename the file"},
    PlexoFindingKind{EntryJunk, "PLX-014", kHint, "A file that a system left behind",
                     "'{0}': left behind by {1}, and of no use in a course", "leave it out of the package"},

    PlexoFindingKind{ManifestTooLarge, "PLX-101", kError, "The manifest is too large",
                     "'imsmanifest.xml': {0}; the rest of it isn't checked",
                     "split the course, list fewer files, or shorten what is too long"},
    PlexoFindingKind{ManifestIllFormed, "PLX-102", kError, "The manifest can't be read as XML",
                     "'imsmanifest.xml': {0}", "mend the XML at this place"},
    PlexoFindingKind{ManifestInvalid, "PLX-103", kWarning, "The manifest breaks the schema of its edition",
                     "{0}", "follow the published schema of the edition"},
    PlexoFindingKind{SchemaUnavailable, "PLX-104", kWarning, "The manifest couldn't be validated",
                     "the schema documents: {0}", "install the program again with its Templates folder"},
    PlexoFindingKind{
        EditionNotValidated, "PLX-105", kHint, "The edition's schema isn't at hand",
        "'{0}': the manifest wasn't validated, for only the schemas of SCORM 1.2 and SCORM 2004 3rd "
        "Edition are at hand",
        "validate it elsewhere"},
    PlexoFindingKind{SchemaFileMissing, "PLX-106", kWarning, "A schema document is named and missing",
                     "'{0}': named in xsi:schemaLocation, but not in the package",
                     "add the document, or leave it out of xsi:schemaLocation", true},

    PlexoFindingKind{RootNotManifest, "PLX-201", kError, "The document is no manifest",
                     "'{0}': the document's element must be 'manifest'", "export the course as SCORM"},
    PlexoFindingKind{
        EditionUnknown, "PLX-202", kWarning, "The manifest names no edition that is known",
        "{0}: names no schemaversion of SCORM; known are '1.2', 'CAM 1.3', '2004 3rd Edition' and "
        "'2004 4th Edition'. The namespaces are those of SCORM {1}, and the package is checked as such",
        "write schema 'ADL SCORM' and the schemaversion into the manifest's metadata"},
    PlexoFindingKind{NamespaceOfOtherEdition, "PLX-203", kWarning,
                     "The manifest's namespace is of another edition",
                     "'{0}': isn't the namespace of SCORM {1}", "write '{2}'"},
    PlexoFindingKind{NoOrganization, "PLX-204", kError, "There is no organization",
                     "the manifest: has no organization, so an LMS has nothing to show",
                     "add an organization with the course's items"},
    PlexoFindingKind{OrganizationEmpty, "PLX-205", kError, "An organization has no item",
                     "organization '{0}': has no item", "add an item, or remove the organization"},
    PlexoFindingKind{TitleMissing, "PLX-206", kWarning, "A title is missing", "{0} '{1}': has no title",
                     "add a title"},
    PlexoFindingKind{ItemWithoutResource, "PLX-207", kWarning, "An item leads nowhere",
                     "item '{0}': has neither a resource nor items below it",
                     "add an identifierref, or remove it"},
    PlexoFindingKind{ItemWithBoth, "PLX-208", kError, "An item has both a resource and items below it",
                     "item '{0}': has a resource and items below it, which SCORM 2004 doesn't allow",
                     "move the resource to an item of its own"},
    PlexoFindingKind{ResourceWithoutHref, "PLX-209", kError, "A launched resource has no href",
                     "resource '{0}': has no href, but item '{1}' launches it", "add the launch file's href"},
    PlexoFindingKind{ScormTypeMissing, "PLX-210", kError, "A launched resource has no valid SCORM type",
                     "resource '{0}': its {1} must be 'sco' or 'asset'", "write '{1}' with the right value"},
    PlexoFindingKind{ResourceType, "PLX-211", kWarning, "A launched resource isn't web content",
                     "resource '{0}': its type is '{1}'", "write type=\"webcontent\""},
    PlexoFindingKind{ResourceUnused, "PLX-212", kHint, "A SCO is never launched",
                     "resource '{0}': a SCO that no item launches", "add an item for it, or remove it"},
    PlexoFindingKind{LowerCaseLaunchData, "PLX-213", kWarning, "Launch data under its SCORM 1.2 name",
                     "item '{0}': '{1}' in lower case is the SCORM 1.2 name: LMSs that follow the schema of "
                     "2004 ignore it, "
                     "and its value '{3}' is lost there. Plexo writes it on purpose, for the LMSs that "
                     "import its packages "
                     "read it",
                     "write adlcp:dataFromLMS and adlcp:timeLimitAction where the LMS follows the standard"},
    PlexoFindingKind{RepeatedLaunchData, "PLX-214", kWarning, "A SCORM 1.2 element stands twice in an item",
                     "item '{0}': '{1}' stands more than once. Plexo writes its own behind the SCO's on "
                     "purpose; LMSs that "
                     "keep the last one lose the value '{2}'",
                     "keep one of them where the LMS refuses both"},
    PlexoFindingKind{
        NestedManifest, "PLX-215", kWarning, "There is a manifest in the manifest",
        "manifest '{0}': stands in another, where many LMSs don't read it; what is in it isn't checked",
        "put its items and resources into the manifest around it"},
    PlexoFindingKind{TitleEmpty, "PLX-216", kWarning, "A title is empty",
                     "{0} '{1}': its title is empty, so LMS menus show a blank line. Plexo writes it for a "
                     "movie of a flat "
                     "course that has no title in the course file",
                     "add a title: 'title' beside the movie in the course file"},
    PlexoFindingKind{EditionUndetermined, "PLX-217", kError, "Nothing in the manifest tells its edition",
                     "{0}: names no schemaversion of SCORM, and no namespace tells the edition",
                     "Write schema 'ADL SCORM' and the schemaversion into the manifest's metadata"},

    PlexoFindingKind{ManifestIdentifierDigit, "PLX-301", kWarning,
                     "The manifest's identifier starts with a digit",
                     "'{0}': an identifier can't start with a digit", "put a letter in front"},
    PlexoFindingKind{IdentifierMalformed, "PLX-302", kWarning, "An identifier is malformed",
                     "{0}: '{1}' is no identifier",
                     "start with a letter or '_', then letters, digits, '.', '-' or '_'"},
    PlexoFindingKind{IdentifierTwice, "PLX-303", kError, "An identifier is declared twice",
                     "'{0}': declared already in line {1}", "give every element an identifier of its own"},
    PlexoFindingKind{ItemResourceUnknown, "PLX-304", kError, "An item's resource doesn't exist",
                     "item '{0}': refers to resource '{1}', which doesn't exist",
                     "correct the identifierref, or add the resource"},
    PlexoFindingKind{DependencyUnknown, "PLX-305", kWarning, "A dependency doesn't exist",
                     "resource '{0}': depends on '{1}', which doesn't exist",
                     "correct or remove the dependency"},
    PlexoFindingKind{DefaultOrganizationUnknown, "PLX-306", kWarning,
                     "The default organization doesn't exist", "'{0}': no organization has this identifier",
                     "name one of the organizations as the default"},
    PlexoFindingKind{SharedSequencingUnknown, "PLX-307", kError, "Shared sequencing doesn't exist",
                     "'{0}': no sequencing of the collection has this ID",
                     "correct the IDRef, or add the sequencing"},

    PlexoFindingKind{FileMissing, "PLX-401", kWarning, "A listed file is missing",
                     "'{0}': listed in the manifest, but not in the package",
                     "add the file, or don't list it"},
    PlexoFindingKind{LaunchFileMissing, "PLX-402", kError, "A launch file is missing",
                     "'{0}': launched by resource '{1}', but not in the package",
                     "add the file, or correct the href"},
    PlexoFindingKind{LaunchFileUnlisted, "PLX-403", kWarning,
                     "A launch file isn't among its resource's files",
                     "'{0}': launched by resource '{1}', which doesn't list it", "add a file element for it"},
    PlexoFindingKind{FileNameCase, "PLX-404", kError, "A name in the manifest differs in case",
                     "'{0}': the package holds it as '{1}', so it isn't found on many servers",
                     "write the name as it is in the package"},
    PlexoFindingKind{FileUnlisted, "PLX-405", kHint, "A file isn't listed in the manifest",
                     "'{0}': no resource lists it, so an LMS may leave it out", "list it, or remove it",
                     true},
    PlexoFindingKind{HrefRawCharacters, "PLX-406", kWarning, "An href holds % or brackets as they are",
                     "'{0}': '%', '[' and ']' must be written as %25, %5B and %5D in an href",
                     "rename the file, or escape the characters"},
    PlexoFindingKind{HrefBackslash, "PLX-407", kWarning, "An href holds a back-slash",
                     "'{0}': a back-slash doesn't separate folders in an href", "write slashes"},
    PlexoFindingKind{HrefLeavesPackage, "PLX-408", kError, "An href leads out of the package",
                     "'{0}': leads out of the package", "put the file into the package"},
    PlexoFindingKind{
        HrefExternal, "PLX-409", kHint, "A resource is on another server",
        "'{0}': isn't in the package, so it must be within the learner's reach, and can't call the LMS",
        "put the content into the package"},

    PlexoFindingKind{ObjectiveUnknown, "PLX-501", kError, "A rule refers to an objective that doesn't exist",
                     "item '{0}': a rule refers to objective '{1}', which the item doesn't have",
                     "add the objective to the item, or correct the rule"},
    PlexoFindingKind{GlobalNeverWritten, "PLX-502", kWarning, "A global objective is read and never written",
                     "item '{0}': reads the global objective '{1}', which nothing in the course writes",
                     "write it from the item that it is about"},
    PlexoFindingKind{WeightsDontSum, "PLX-506", kWarning, "Weights don't add up to 1",
                     "{0} '{1}': the weights of its children add up to {2}, not 1",
                     "correct objectiveMeasureWeight"},
    PlexoFindingKind{WeightMalformed, "PLX-507", kWarning, "A weight isn't a plain number from 0 to 1",
                     "item '{0}': its weight is '{1}'; expected a number from 0 to 1 without an exponent",
                     "write it as 0.25"},
    PlexoFindingKind{
        SequencingOrder, "PLX-508", kWarning, "Parts of sequencing stand in the wrong order",
        "'{0}': must stand before '{1}'",
        "order them: controlMode, sequencingRules, limitConditions, auxiliaryResources, rollupRules, "
        "objectives, randomizationControls, deliveryControls"},
    PlexoFindingKind{
        FailedPretestOpens, "PLX-512", kWarning, "A failed pretest opens what comes next",
        "'{0}': opens as soon as '{1}' has any status, so failing that pretest is enough",
        "nothing to do if that is meant; else wait for satisfied instead of objectiveStatusKnown"},
    PlexoFindingKind{FailingOpens, "PLX-516", kHint, "Failing opens what comes next",
                     "'{0}': opens as soon as '{1}' has passed or failed, so that failing is enough{2}",
                     "Do nothing if learners may go on after a failure. Else wait for satisfied instead of "
                     "objectiveStatusKnown"},
    PlexoFindingKind{
        ResultTakenBack, "PLX-517", kHint, "Opening finished content again may close what comes next",
        "'{0}': closes again when a learner opens the finished '{1}' and leaves it as incomplete{2}",
        "Let the content stay completed when it is opened again"},
    PlexoFindingKind{
        ScoreDiluted, "PLX-519", kWarning, "Content without a score lowers the course's score",
        "{0} '{1}': {2} of its {3} items report no score, as far as their scripts show; they count as 0 "
        "beside '{4}'",
        "Give them the weight 0 (objectiveMeasureWeight), or use a template with modules, in which only "
        "tests count"},
    PlexoFindingKind{ContentNeverReached, "PLX-520", kError, "Content can never be reached",
                     "{0}: can never be reached{1}{2}",
                     "Where content reports too little, let it report, let completion pass "
                     "('completion-passes' in the course "
                     "file), or don't force the order; else mend the rule, control mode or map that keeps "
                     "the item closed"},
    PlexoFindingKind{
        CourseNeverCompleted, "PLX-521", kError, "No learner can complete the course",
        "{0}: no learner can complete the course{1}",
        "Where content reports too little, let it set cmi.completion_status, or let the LMS set it "
        "(completionSetByContent \"false\"); else mend the rollup rules"},
    PlexoFindingKind{
        CourseNeverPassed, "PLX-522", kWarning, "No learner can pass the course",
        "{0}: no learner can pass the course{1}",
        "Where content reports too little, let it set cmi.success_status, or let completion pass "
        "('completion-passes' in the course file); else mend the rollup rules"},
    PlexoFindingKind{LearnerLost, "PLX-523", kError, "Nothing can be launched any more",
                     "{0}: after {1} nothing can be launched any more, not even in a new session, and the "
                     "course isn't complete",
                     "Leave a way on: let the rules that close the other items wait for less, or raise the "
                     "attempt limit"},
    PlexoFindingKind{
        LearnerLostInSession, "PLX-524", kWarning, "Nothing can be launched until the course is started anew",
        "{0}: after {1} nothing can be launched any more until the course is left and started "
        "anew",
        "Allow choice in the controlMode, or repeat the content with a postConditionRule (retry)"},
    PlexoFindingKind{PretestInVain, "PLX-525", kWarning, "A passed pretest doesn't spare its content",
                     "{0}: who passes it still has to take {1}",
                     "Let the rule that skips the content read the objective that the pretest writes"},
    PlexoFindingKind{CompletedUnseen, "PLX-526", kHint, "The course is complete before all was seen",
                     "{0}: the course is complete before it was seen",
                     "Do nothing if it may be left out. Else let it count in the rollup "
                     "(rollupProgressCompletion), or wait for all children instead of any"},
    PlexoFindingKind{
        ContinueStops, "PLX-527", kWarning, "Continue ends before the course does",
        "{0}: ends with the LMS's Continue disabled, though {1} wasn't seen and the course isn't "
        "complete{2}",
        "Open what comes next by then, or let a rule skip it instead of disabling it"},
    PlexoFindingKind{StartLaunchesNothing, "PLX-528", kWarning, "Starting the course launches nothing",
                     "{0}: starting the course launches nothing; learners must choose from the contents list",
                     "Write flow=\"true\" into the controlMode of the organization"},
    PlexoFindingKind{
        RestartLaunchesNothing, "PLX-529", kHint, "The course can't be started anew",
        "{0}: who finishes it and leaves the course there can't {1}, only choose from the "
        "contents list",
        "Tell learners to press Continue before they leave, and to suspend the course; or let the "
        "rule that closes what was done skip instead of disable"},
    PlexoFindingKind{
        FailureSticks, "PLX-530", kWarning, "Who fails at first can't pass any more",
        "{0}: who fails it at first, and passes it and all others later, doesn't pass the course",
        "Let the test be repeated: raise its attempt limit, or don't close it after a failure"},
    PlexoFindingKind{SuspensionLoses, "PLX-531", kWarning, "Suspending the course loses what was done",
                     "{0}: who suspends the course in every item can't resume or complete it after this one",
                     "See which rule or rollup consideration (ifNotSuspended) leaves suspended items out"},
    PlexoFindingKind{LearnerLostLater, "PLX-532", kHint,
                     "Leaving the course without suspending may close everything",
                     "{0}: after {1} nothing can be launched any more, where learners leave the course "
                     "without suspending it",
                     "Tell learners to suspend the course when they leave"},

    PlexoFindingKind{OtherEditionApi, "PLX-601", kError, "Content calls the other edition's API",
                     "item '{0}': its scripts call {1} only, which a SCORM {2} course doesn't offer",
                     "publish the content for SCORM {2}"},
    PlexoFindingKind{NoApi, "PLX-602", kWarning, "A SCO never calls the LMS",
                     "item '{0}': a SCO whose scripts never call {1}, as far as they show",
                     "add the calls, or make it an asset"},
    PlexoFindingKind{SessionNotEnded, "PLX-603", kWarning, "A SCO never ends its session",
                     "item '{0}': its scripts call {1} and never {2}, as far as they show",
                     "end the session when the page goes"},
    PlexoFindingKind{AssetUsesApi, "PLX-604", kWarning, "An asset calls the LMS",
                     "item '{0}': is an asset, but its scripts call {1}: an LMS needn't offer it the API",
                     "make the resource a 'sco'"},
    PlexoFindingKind{EndsCourse, "PLX-605", kWarning, "Content ends the whole course",
                     "item '{0}': its scripts send {1}, which ends the whole course",
                     "Let the content end its own visit only"},
    PlexoFindingKind{
        BookmarkLost, "PLX-606", kWarning, "Content keeps a bookmark and doesn't suspend",
        "item '{0}': its scripts store where the learner is and never set cmi.exit to 'suspend', as far as "
        "they show, so that an LMS forgets it",
        "Let the content set cmi.exit to 'suspend' before it calls Terminate"},

    PlexoFindingKind{PathTooLong, "PLX-701", kWarning, "A path is too long for some servers",
                     "'{0}': {1} characters; {2} are safe ({3})", "shorten the names of folders"},
    PlexoFindingKind{IdentifierTooLong, "PLX-702", kWarning, "An identifier is longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})", "shorten it"},
    PlexoFindingKind{TitleTooLong, "PLX-703", kWarning, "A title is longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})", "shorten it"},
    PlexoFindingKind{HrefTooLong, "PLX-704", kWarning, "An href is longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})", "shorten the names of folders"},
    PlexoFindingKind{ParametersTooLong, "PLX-705", kWarning, "Parameters are longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})", "shorten them"},
    PlexoFindingKind{LaunchDataTooLong, "PLX-706", kWarning, "Launch data is longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})",
                     "shorten it, or load it from a file"},
    PlexoFindingKind{MetadataTooLong, "PLX-707", kWarning,
                     "A text of the metadata is longer than an LMS must store",
                     "'{0}': {1} characters; an LMS must store {2} ({3})", "shorten it"},
    PlexoFindingKind{
        SuspendDataLimited, "PLX-708", kHint, "Suspend data is limited",
        "item '{0}': its scripts use cmi.suspend_data, of which an LMS must store {1} characters only "
        "({2})",
        "see that the content never stores more", true},
    PlexoFindingKind{ArchiveTooLarge, "PLX-709", kWarning, "The archive is too large for some unpackers",
                     "the package: {0} {1}; {2} are safe ({3})",
                     "leave out what the course doesn't need, or make several courses of it"},

    PlexoFindingKind{ForeignFormat, "PLX-801", kError, "The package is of another format than SCORM",
                     "the package: is {0}, not SCORM", "export the course as SCORM 1.2 or SCORM 2004"},
    PlexoFindingKind{SeveralManifests, "PLX-802", kError,
                     "There are several manifests, and none at the top of the package",
                     "the package: holds {0} manifests, and none at its top: {1}",
                     "pack what is in the folder of each by itself"},
    PlexoFindingKind{EditionUntold, "PLX-803", kError, "The manifest tells no edition of SCORM",
                     "the manifest: neither its schemaversion nor its namespaces, its resources or its "
                     "version '{0}' tell an edition of SCORM",
                     "export the course as SCORM 1.2 or SCORM 2004"},
    PlexoFindingKind{NothingToLaunch, "PLX-804", kError, "There is nothing to launch",
                     "the manifest: no item leads to a page of the package",
                     "correct the identifierref of its items, or the href of its resources"},
    PlexoFindingKind{SeveralItems, "PLX-805", kError, "There are several items where one is wanted",
                     "the package: {0} of its items can be launched, and one is wanted: {1}",
                     "name one of them by its identifier"},
    PlexoFindingKind{ItemUnknown, "PLX-806", kError, "The item that was asked for doesn't exist",
                     "item '{0}': isn't among those that can be launched: {1}", "name one of these"},
    PlexoFindingKind{PackagesTooLarge, "PLX-807", kError,
                     "The packages of all items would be too large together",
                     "the package: its {0} items share so many files that a package of each would hold more "
                     "than {1} MiB together",
                     "take the items that the course needs one by one: 'item' in the course file, --item of "
                     "'plexo adopt'"},
    PlexoFindingKind{
        TooManyItems, "PLX-808", kError, "A package has too many items to be taken apart",
        "the package: it has {0} items that can be launched; a package of each is made of {1} at "
        "most",
        "take the items that the course needs one by one: 'item' in the course file, --item of "
        "'plexo adopt'"},

    PlexoFindingKind{VersionCorrected, "PLX-811", kWarning, "The manifest's version wasn't the edition's",
                     "the manifest: its version '{0}' became '{1}', that of SCORM {2}", "nothing to do"},

    PlexoFindingKind{PrefixRebound, "PLX-821", kWarning, "Names were bound to another prefix",
                     "the prefix '{0}': became {1}", "nothing to do"},
    PlexoFindingKind{BaseResolved, "PLX-822", kWarning, "Addresses were relative to xml:base",
                     "xml:base '{0}': put in front of the addresses within", "nothing to do"},
    PlexoFindingKind{ParametersMoved, "PLX-823", kWarning, "An item had launch parameters",
                     "item '{0}': its parameters '{1}' became part of the launch address '{2}'",
                     "nothing to do"},
    PlexoFindingKind{HrefMatched, "PLX-824", kHint, "An address wasn't that of the file that it means",
                     "'{0}': means the file '{1}', whose address is '{2}'", "nothing to do"},
    PlexoFindingKind{EncodingChanged, "PLX-825", kHint, "The manifest wasn't in UTF-8",
                     "the manifest: its encoding '{0}' became UTF-8", "nothing to do"},
    PlexoFindingKind{AttributeTooFar, "PLX-826", kWarning, "An attribute stood behind the tenth",
                     "{0} '{1}': its attribute {2} stood behind the tenth", "nothing to do"},
    PlexoFindingKind{AttributeMissing, "PLX-827", kWarning, "An attribute was missing",
                     "{0} '{1}': has no attribute {2}", "nothing to do"},
    PlexoFindingKind{AddressProtected, "PLX-828", kWarning, "Slashes of a launch address would be lost",
                     "'{0}': became '{1}', for a course joins addresses as paths", "nothing to do"},
    PlexoFindingKind{ParametersDropped, "PLX-829", kHint, "An item's launch parameters had no place",
                     "item '{0}': its parameters '{1}' add nothing to the launch address '{2}'",
                     "nothing to do: an LMS leaves them out too"},

    PlexoFindingKind{ManifestLifted, "PLX-831", kWarning, "The manifest wasn't at the top of the package",
                     "'{0}': moved to the top", "nothing to do"},
    PlexoFindingKind{TopFilesMoved, "PLX-832", kWarning, "Unlisted files stood at the top of the package",
                     "{0}: stood at the top without being listed; now with the content", "nothing to do"},
    PlexoFindingKind{SchemaFolderNameTaken, "PLX-833", kWarning,
                     "Content lay in a folder with the name of a schema folder",
                     "'{0}': would have been taken for schema documents, and now lies with the content",
                     "nothing to do"},
    PlexoFindingKind{FilesListed, "PLX-834", kHint, "Files weren't listed in the manifest", "{0}: now listed",
                     "nothing to do"},
    PlexoFindingKind{JunkLeftOut, "PLX-835", kHint, "Files that a system left behind were left out",
                     "{0}: left behind by {1}, and left out", "nothing to do"},
    PlexoFindingKind{SchemasLeftOut, "PLX-836", kHint, "The package's schema documents were left out",
                     "{0}: left out, for the course brings its own", "nothing to do"},
    PlexoFindingKind{ListedFileAbsent, "PLX-837", kWarning, "A listed file isn't in the package",
                     "'{0}': listed, but not in the package; not listed any more",
                     "add the file to the package if the content needs it"},
    PlexoFindingKind{ListedOtherwise, "PLX-838", kWarning,
                     "Files at the top were listed in a way that a course doesn't read",
                     "{0}: listed in a way that a course doesn't read; now with the content",
                     "nothing to do"},

    PlexoFindingKind{ItemsSeparated, "PLX-841", kWarning, "The package held several SCOs",
                     "the package: each of its {0} items became a package: {1}",
                     "look at the order and the titles in the course"},
    PlexoFindingKind{OtherResourceLaunched, "PLX-842", kWarning, "The last resource wasn't the one to launch",
                     "resource '{0}': the last one, but {1} launches '{2}'", "nothing to do"},
    PlexoFindingKind{OtherTitleRead, "PLX-843", kWarning, "The last title wasn't the launched item's",
                     "title '{0}': the last one, but that of {1} is '{2}'", "nothing to do"},
    PlexoFindingKind{ItemLeftOut, "PLX-844", kWarning, "An item that can't be launched was left out",
                     "item '{0}': left out: {1}", "correct the source if the course needs the item"},
    PlexoFindingKind{OtherItemsLeftOut, "PLX-845", kWarning, "Items that weren't asked for were left out",
                     "the package: item '{0}' was taken, and {1} others left out: {2}",
                     "adopt the others too, if the course needs them"},
    PlexoFindingKind{SequencingDropped, "PLX-846", kWarning, "Sequencing was dropped",
                     "{0} '{1}': its sequencing was dropped, for the course's own takes its place",
                     "choose the template that sequences as the old course did"},
    PlexoFindingKind{PrerequisitesDropped, "PLX-847", kWarning, "Prerequisites were dropped",
                     "item '{0}': its prerequisites '{1}' were dropped",
                     "force the order in the course, if it matters"},
    PlexoFindingKind{LimitDropped, "PLX-848", kWarning,
                     "A limit, a threshold or the objective of an item was dropped",
                     "item '{0}': its {1} '{2}' was dropped", "let the content itself see to it"},
    PlexoFindingKind{LaunchDataDropped, "PLX-849", kWarning, "Malformed launch data was dropped",
                     "item '{0}': its {1} '{2}' isn't what SCORM {3} allows, and was dropped",
                     "correct it in the source, if the content needs it"},
    PlexoFindingKind{
        AssetLaunched, "PLX-850", kHint, "An item launches an asset",
        "item '{0}': is an asset, which tells the LMS nothing, and stands as a SCO in the course",
        "don't let the course wait for it"},
    PlexoFindingKind{MetadataFileAbsent, "PLX-851", kWarning, "A metadata file isn't in the package",
                     "item '{0}': its metadata file '{1}' isn't in the package",
                     "add the file to the package if the course needs it"},
    PlexoFindingKind{OrganizationsLeftOut, "PLX-852", kWarning, "Other organizations were left out",
                     "the package: its items are those of organization '{0}', and others were left out: {1}",
                     "name another one as the default in the source, if the course needs it"},
    PlexoFindingKind{TitleSupplied, "PLX-853", kWarning, "What is launched had no title of its own",
                     "{0}: has no title of its own, and got '{1}'", "give it a title in the source"},
    PlexoFindingKind{ItemMended, "PLX-854", kWarning, "The only item launched nothing",
                     "item '{0}': {1}, so it launches resource '{2}', the only one with a page",
                     "correct the identifierref in the source if another page is meant"},
    PlexoFindingKind{DetailDropped, "PLX-855", kHint, "Something that a course has no place for was dropped",
                     "{0} '{1}': its {2} was dropped", "nothing to do"},

    PlexoFindingKind{LaunchPageAdded, "PLX-861", kWarning, "Content of the other edition got a launch page",
                     "item '{0}': content of SCORM {1}, launched in SCORM {2} through a page that translates",
                     "nothing to do"},
    PlexoFindingKind{CompletionPasses, "PLX-862", kWarning, "Completion counts as passing",
                     "item '{0}': passes when it completes, for it was asked for", "nothing to do"},
    PlexoFindingKind{
        CompletionMayNotPass, "PLX-863", kWarning, "Content completes, and may never pass",
        "item '{0}': reports completion and never success, as far as its scripts show, so what waits for its "
        "success never opens",
        "let completion pass: 'completion-passes' in the course file, --completion-passes of 'plexo adopt'"},
    PlexoFindingKind{ReportsNothing, "PLX-864", kWarning, "Content reports nothing at all",
                     "item '{0}': reports neither completion nor success, as far as its scripts show, so "
                     "what waits for it "
                     "never opens",
                     "let the content report, or don't force the order"},
    PlexoFindingKind{LaunchValueReplaced, "PLX-865", kWarning,
                     "A SCORM 1.2 course replaces what an item says",
                     "item '{0}': its {1} '{2}' is lost in a course of SCORM 1.2, which publishes {3} for "
                     "every SCO",
                     "set it in the LMS after the import, or in the content itself"},
    PlexoFindingKind{LaunchDataUnread, "PLX-866", kWarning,
                     "A SCORM 2004 course publishes launch data under a name that some LMSs ignore",
                     "item '{0}': a course of SCORM 2004 publishes its {1} '{2}' as {3}, which LMSs that "
                     "follow the schema ignore",
                     "try the content in the LMS: it may hang there, or start without its data"},
    PlexoFindingKind{SuccessUncertain, "PLX-867", kWarning, "Content may not report success",
                     "item '{0}': can't tell whether it reports success: its scripts can, and may be set to "
                     "report completion only; what waits for its success would never open",
                     "let completion pass: 'completion-passes: true' in the course file, beside the file or "
                     "for the whole course; --completion-passes of 'plexo adopt'"},
    PlexoFindingKind{SiblingPageLinked, "PLX-868", kWarning, "A page links to the page of another item",
                     "item '{0}': its pages link to {1}, {2} that its package holds too; what a learner does "
                     "there counts for '{0}'",
                     "remove the link, or take the package as one SCO from its source"},
    PlexoFindingKind{PackagesOutgrowSource, "PLX-869", kWarning,
                     "The packages of all items are larger together than their source",
                     "the package: its {0} items share files, so their packages hold {1} together, {3} times "
                     "the {2} of the source",
                     "take only the items that the course needs: 'item' in the course file, --item of "
                     "'plexo adopt'"},
    PlexoFindingKind{SiblingLinksDead, "PLX-870", kWarning, "Links to pages of other items are dead",
                     "item '{0}': its pages link to {1}, {2} that its package doesn't hold, for the packages "
                     "would be too large together; these links are dead",
                     "remove the links, or take the package as one SCO from its source"},
    PlexoFindingKind{ObjectivesPreset, "PLX-871", kWarning, "A launch page lists the content's objectives",
                     "item '{0}': a course has no place for its objectives {1}, so a launch page lists them",
                     "nothing to do"},
};

consteval bool IsInOrder() {
  for (std::size_t index = 0; index < kKinds.size(); ++index) {
    if (static_cast<std::size_t>(kKinds[index].id) != index) return false;
    if (index > 0 && kKinds[index - 1].code >= kKinds[index].code) return false;
  }
  return kKinds.size() == static_cast<std::size_t>(PlexoFindingId::Count);
}
static_assert(IsInOrder(), "the table has one row for every finding, in their order");

/// The words put into a pattern.
std::string Fill(std::string_view pattern, std::span<const std::string> words) {
  std::string text;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    if (pattern[at] != '{') {
      text += pattern[at];
      continue;
    }
    const auto index = static_cast<std::size_t>(pattern[at + 1] - '0');
    if (index < words.size()) text += words[index];
    at += 2;
  }
  return text;
}

/// A pattern for readers: its words as dots.
std::string ForReaders(std::string_view pattern) {
  static const std::array<std::string, 5> kDots = {"…", "…", "…", "…", "…"};
  return Fill(pattern, kDots);
}

}  // namespace

std::span<const PlexoFindingKind> PlexoFindingTable::GetKinds() { return kKinds; }

const PlexoFindingKind& PlexoFindingTable::GetKind(PlexoFindingId id) {
  return kKinds.at(static_cast<std::size_t>(id));
}

std::string PlexoFindingTable::GetText(const PlexoFinding& finding) {
  return Fill(GetKind(finding.id).pattern, finding.words);
}

std::string PlexoFindingTable::GetWayOut(const PlexoFinding& finding) {
  return Fill(GetKind(finding.id).wayOut, finding.words);
}

std::string_view PlexoFindingTable::GetName(PlexoSeverity severity) {
  if (severity == PlexoSeverity::Error) return "error";
  return severity == PlexoSeverity::Warning ? "warning" : "hint";
}

std::string PlexoFindingTable::WriteMarkdown() {
  std::string page =
      "# Findings of `plexo check` and `plexo adopt`\n"
      "\n"
      "Made by `plexo check --list`; the table in `check/PlexoFindingTable.cpp` is the source. An id is "
      "never given to another finding. An error keeps a course, or a part of it, from working in most "
      "LMSs, a warning in some; a hint is worth knowing.\n"
      "\n"
      "PLX-520 to PLX-532 come of playing the course as learners do; "
      "[templates-and-results.md](templates-and-results.md) tells how. "
      "PLX-503, "
      "504, 505, 509, 510, 511, 513, 514, 515 and 518 guessed at the same from patterns; they are retired, "
      "and "
      "no other finding gets their ids.\n"
      "\n"
      "| Id | Severity | What | Text | Way out |\n"
      "|---|---|---|---|---|\n";
  for (const PlexoFindingKind& kind : kKinds) {
    page.append("| ").append(kind.code).append(" | ").append(GetName(kind.severity)).append(" | ");
    page.append(kind.title).append(" | ").append(ForReaders(kind.pattern)).append(" | ");
    page.append(ForReaders(kind.wayOut)).append(" |\n");
  }
  return page;
}
