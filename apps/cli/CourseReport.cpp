// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CourseReport.h"

#include <nlohmann/json.hpp>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "publish/PlexoIdentifiers.h"

void CourseReport::PrintText(CommandOutput& output) const {
  output.PrintLine(package);
  std::vector<std::vector<std::string>> rows;
  for (const PlexoSCOModel& sco : GetLinearCourseModel()->GetSCOs()) {
    const std::size_t count = sco.manifest.files.size();
    rows.push_back({"  " + MakePrintable(sco.manifest.title.GetUTF8String()),
                    MakePrintable(sco.manifest.href.GetUTF8String()),
                    std::to_string(count) + (count == 1 ? " file" : " files")});
  }
  for (const std::string& line : AlignColumns(rows)) output.PrintLine(line);
}

void CourseReport::PrintJson(CommandOutput& output) const {
  using Json = nlohmann::ordered_json;
  const PlexoCourseModel* model = GetCourseModel();
  Json document = {{"package", package},
                   {"identifier", model->GetCourseIdentifier().GetUTF8String()},
                   {"scorm", model->GetScormVersion().GetUTF8String()},
                   {"template", course.templateName},
                   {"scos", Json::array()}};
  std::uint32_t index = 0;
  for (const PlexoSCOModel& sco : GetLinearCourseModel()->GetSCOs()) {
    const TzString identifier = MakeIdentifier("SCO", index, kNoIndex, ItemKind::Item);
    document["scos"].push_back({{"title", sco.manifest.title.GetUTF8String()},
                                {"identifier", identifier.GetUTF8String()},
                                {"href", sco.manifest.href.GetUTF8String()},
                                {"files", sco.manifest.files.size()},
                                {"source", course.files[index].name}});
    ++index;
  }
  output.PrintDocument(document.dump(2, ' ', false, Json::error_handler_t::replace));
}
