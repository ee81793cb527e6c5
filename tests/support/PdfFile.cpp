// SPDX-License-Identifier: Apache-2.0
#include "support/PdfFile.h"

#include <stdexcept>

#include "support/ProgramRun.h"
#include "support/TestSession.h"

namespace {

constexpr int kFirstPage = 10;

std::string PadNumber(std::size_t number) {
  const std::string digits = std::to_string(number);
  return std::string(10 - digits.size(), '0') + digits;
}

}  // namespace

PdfFile::PdfFile(int pageCount) : pages(static_cast<std::size_t>(pageCount)) {}

PdfFile& PdfFile::Catalog(const std::string& entries) {
  catalog += entries + " ";
  return *this;
}

PdfFile& PdfFile::Page(int index, const std::string& entries) {
  pages.at(static_cast<std::size_t>(index)) += entries + " ";
  return *this;
}

PdfFile& PdfFile::Object(int number, const std::string& content) {
  others[number] = content;
  return *this;
}

PdfFile& PdfFile::Trailer(const std::string& entries) {
  trailer += entries + " ";
  return *this;
}

PdfFile& PdfFile::DamageTable() {
  hasTable = false;
  return *this;
}

std::string PdfFile::Build() const {
  std::map<int, std::string> objects = {{1, "<< /Type /Catalog /Pages 2 0 R " + catalog + ">>"}};
  std::string kids;
  int number = kFirstPage;
  for (const std::string& entries : pages) {
    kids += std::to_string(number) + " 0 R ";
    objects[number++] = "<< /Type /Page /Parent 2 0 R " + entries + ">>";
  }
  // The size of a page stands in the tree, for its pages to inherit.
  objects[2] = "<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages.size()) +
               " /MediaBox [ 0 0 200 100 ] >>";
  for (const auto& [other, content] : others) objects[other] = content;

  std::string text = "%PDF-1.5\n";
  std::string table = "0000000000 65535 f \n";
  int next = 1;
  for (const auto& [each, content] : objects) {
    for (; next < each; ++next) table += "0000000000 00000 f \n";
    table += PadNumber(text.size()) + " 00000 n \n";
    ++next;
    text += std::to_string(each) + " 0 obj\n" + content + "\nendobj\n";
  }
  const std::size_t tableStart = hasTable ? text.size() : text.size() / 2;
  const std::string size = std::to_string(next);
  return text + "xref\n0 " + size + "\n" + table + "trailer\n<< " + trailer + "/Root 1 0 R /Size " + size +
         " >>\nstartxref\n" + std::to_string(tableStart) + "\n%%EOF\n";
}

TzPath PdfFile::Save(const TzPath& folder, const std::string& name) const {
  WriteFile(folder / name, Build());
  return folder / name;
}

TzPath ConvertPdf(const TzPath& document, const std::vector<std::string>& options) {
  TzPath converted = TzPath::FromNative(document.GetNative() + ".converted.pdf");
  std::vector<std::string> arguments = {"qpdf"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.insert(arguments.end(), {document.GetNative(), converted.GetNative()});
  const ProgramResult result = ProgramRun("/usr/bin/env", arguments).Run();
  // 3 stands for warnings.
  if (result.status != 0 && result.status != 3) throw std::runtime_error("qpdf: " + result.err);
  return converted;
}
