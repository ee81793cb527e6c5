// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfKit.h"

#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfUnpacking.h"
#include "host/session/TzProblem.h"

namespace {

bool isStarted = false;

}  // namespace

void TzPdfKit::Start() {
  TzPdfUnpacking::Register();
  isStarted = true;
}

void TzPdfKit::Stop() { isStarted = false; }

bool TzPdfKit::IsStarted() { return isStarted; }

std::unique_ptr<TzPdfDocument> TzPdfKit::Open(const TzPath& file) {
  try {
    if (!isStarted) throw TzPdfFailure("the PDF library isn't started");
    return std::make_unique<TzPdfDocument>(file);
  } catch (const TzPdfFailure& failure) {
    TzReportProblem(kTzFailure, file.GetFileName().GetUTF8String(), failure.what());
    throw;
  }
}
