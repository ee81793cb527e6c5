// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopWords.h"

#include "host/text/ITzStringDictionary.h"

namespace {

struct Word {
  const char* key;
  const char* text;
};

constexpr Word kWords[] = {
    {"kDesktopFileMenu", "File"},
    {"kDesktopNewCourse", "New course"},
    {"kDesktopOpenCourse", "Open course..."},
    {"kDesktopRecentCourses", "Recent courses"},
    {"kDesktopSaveCourse", "Save course"},
    {"kDesktopSaveCourseAs", "Save course as..."},
    {"kDesktopPublish", "Publish..."},
    {"kDesktopQuit", "Quit"},
    {"kDesktopEditMenu", "Edit"},
    {"kDesktopMoveUp", "Move up"},
    {"kDesktopMoveDown", "Move down"},
    {"kDesktopDelete", "Delete"},
    {"kDesktopAddFile", "Add file..."},
    {"kDesktopAddModule", "Add module"},
    {"kDesktopViewMenu", "View"},
    {"kDesktopHelpMenu", "Help"},
    {"kDesktopAbout", "About Plexo"},
    {"kDesktopLanguage", "Language"},
    {"kDesktopLanguageAtNextStart", "The language changes when Plexo starts again."},
    {"kDesktopAppearance", "Appearance"},
    {"kDesktopLight", "Light"},
    {"kDesktopDark", "Dark"},
    {"kDesktopSystem", "System"},
    {"kDesktopCancel", "Cancel"},
    {"kDesktopAddingFiles", "Adding files"},
    {"kDesktopPublishing", "Publishing"},
    {"kDesktopPackageCreated", "Package created"},
    {"kDesktopShowInFolder", "Show in folder"},
    {"kDesktopDropFiles", "Drop files here to add them"},
    {"kDesktopFirstSteps",
     "Choose a template to start a course. Then add your SCORM packages and publish them as one package."},
    {"kDesktopCourseFiles", "Course files"},
    {"kDesktopUnsavedCourse", "Unsaved course"},
    {"kDesktopOpenFailed", "The course file can't be opened"},
    {"kDesktopPartlyOpened", "The course was opened, but not everything could be taken"},
    {"kDesktopSaveFailed", "The course file can't be saved"},
    {"kDesktopSaveQuestion", "Save this course before another one is opened?"},
    {"kDesktopUnsavedIsLost", "If you don't save it, your changes are lost."},
    {"kDesktopRestoreQuestion", "Your last course wasn't saved. Restore it?"},
    {"kDesktopRestore", "Restore"},
    {"kDesktopDiscard", "Discard"},
    {"kDesktopSummary", "Combine SCORM packages and PDF documents into one SCORM package"},
    {"kDesktopNameTaken",
     "The first of these files isn't added: the second has its name in the same place. Rename the file and "
     "add it again."},
    {"kDesktopNoComponent", "Plexo isn't installed completely: its component can't be loaded."},
};

}  // namespace

void RegisterDesktopWords(ITzStringDictionary& dictionary) {
  for (const auto& [key, text] : kWords) dictionary.RegisterDefault(key, text);
}
