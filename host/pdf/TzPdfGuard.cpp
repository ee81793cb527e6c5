// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfGuard.h"

#include <cstdint>
#include <new>
#include <qpdf/QPDFExc.hh>

namespace {

/// A quarter of the stack that threads have by default.
constexpr std::uintptr_t kMostStack = std::uintptr_t{2} << 20U;

thread_local std::uintptr_t stackStart = 0;

// The frame and not a local variable: sanitizers keep those elsewhere.
std::uintptr_t GetStackPlace() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

}  // namespace

TzPdfDepth::TzPdfDepth() : isOutermost(stackStart == 0) {
  if (isOutermost) stackStart = GetStackPlace();
}

TzPdfDepth::~TzPdfDepth() {
  if (isOutermost) stackStart = 0;
}

void TzPdfDepth::Check() {
  const std::uintptr_t place = GetStackPlace();
  if (stackStart == 0 || place >= stackStart || stackStart - place < kMostStack) return;
  throw TzPdfFailure("its objects are nested too deeply");
}

void ThrowPdfFailure() {
  try {
    throw;
  } catch (const TzPdfFailure&) {
    throw;
  } catch (const QPDFExc& failure) {
    const bool needsPassword = failure.getErrorCode() == qpdf_e_password;
    throw TzPdfFailure(needsPassword ? "it opens with a password only" : failure.getMessageDetail());
  } catch (const std::bad_alloc&) {
    throw TzPdfFailure("it takes more memory than there is");
  } catch (const std::exception& failure) {
    throw TzPdfFailure(failure.what());
  }
}
