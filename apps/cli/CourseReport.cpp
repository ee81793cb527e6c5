// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CourseReport.h"

#include <nlohmann/json.hpp>

#include "core/PlexoCourseModel.h"

void CourseReport::PrintText(CommandOutput& output) const {
  output.PrintLine(package);
  std::vector<std::vector<std::string>> rows;
  for (const auto& [source, identifier, moduleNumber, role, isAdopted, page, manifest] : scos) {
    std::vector<std::string>& row = rows.emplace_back();
    if (moduleNumber != 0) row = {"  module " + std::to_string(moduleNumber), role};
    const std::size_t count = manifest.files.size();
    row.push_back((moduleNumber == 0 ? "  " : "") +
                  MakePrintable(manifest.GetTitleOr(manifest.title).GetUTF8String()));
    row.push_back(MakePrintable(page));
    row.push_back(std::to_string(count) + (count == 1 ? " file" : " files"));
  }
  for (const std::string& line : AlignColumns(rows)) output.PrintLine(line);
}

void CourseReport::PrintJson(CommandOutput& output) const {
  using Json = nlohmann::ordered_json;
  const PlexoCourseModel* model = GetCourseModel();
  Json document = {{"package", package},
                   {"identifier", model->GetCourseIdentifier().GetUTF8String()},
                   {"scorm", model->GetScormVersion().GetUTF8String()},
                   {"template", GetTemplateName(course.courseTemplate)},
                   {"scos", Json::array()}};
  for (const auto& [source, identifier, moduleNumber, role, isAdopted, page, manifest] : scos) {
    Json sco = {{"title", manifest.GetTitleOr(manifest.title).GetUTF8String()},
                {"identifier", identifier},
                {"href", manifest.href.GetUTF8String()},
                {"page", page},
                {"files", manifest.files.size()},
                {"source", source},
                {"adopted", isAdopted}};
    if (moduleNumber != 0) {
      sco["module"] = moduleNumber;
      sco["role"] = role;
    }
    document["scos"].push_back(std::move(sco));
  }
  output.PrintDocument(document.dump(2, ' ', false, Json::error_handler_t::replace));
}
