// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopArguments.h"

#include <QCommandLineParser>

namespace {

const QCommandLineOption& GetHelpOption() {
  static const QCommandLineOption option(QStringList{"h", "help"});
  return option;
}

const QCommandLineOption& GetVersionOption() {
  static const QCommandLineOption option("version");
  return option;
}

const QCommandLineOption& GetLanguageOption() {
  static const QCommandLineOption option("language", {}, "LANGUAGE");
  return option;
}

const QCommandLineOption& GetPaletteOption() {
  static const QCommandLineOption option("palette", {}, "PALETTE");
  return option;
}

/// What is wrong with what was read.
QString FindProblem(const QCommandLineParser& parser) {
  if (!parser.errorText().isEmpty()) return parser.errorText();
  if (parser.positionalArguments().size() > 1) return "more than one course file";
  const QString palette = parser.value(GetPaletteOption());
  const bool isPalette = QStringList{"", "light", "dark", "system"}.contains(palette);
  return isPalette ? QString() : "'" + palette + "' is no palette; light, dark and system are";
}

}  // namespace

DesktopArguments DesktopArguments::Read(const QStringList& words) {
  QCommandLineParser parser;
  parser.addOptions({GetHelpOption(), GetVersionOption(), GetLanguageOption(), GetPaletteOption()});
  parser.parse(words);
  return {.course = parser.positionalArguments().value(0),
          .language = parser.value(GetLanguageOption()),
          .palette = parser.value(GetPaletteOption()),
          .wantsHelp = parser.isSet(GetHelpOption()),
          .wantsVersion = parser.isSet(GetVersionOption()),
          .problem = FindProblem(parser)};
}

QString DesktopArguments::GetHelp() {
  return "usage: plexo-desktop [OPTIONS] [COURSE.plexo.yaml]\n"
         "  Combines SCORM packages and PDF documents into one SCORM package.\n"
         "  COURSE.plexo.yaml     a course file to open\n"
         "  --language LANGUAGE   the words for this run: en, de, es, fr, ja\n"
         "  --palette PALETTE     the colours for this run: light, dark, system\n"
         "  --version             print the version\n"
         "  -h, --help            print this\n";
}

QString DesktopArguments::GetVersion() { return "plexo-desktop " PLEXO_VERSION "\n"; }
