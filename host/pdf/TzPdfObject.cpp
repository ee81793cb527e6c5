// SPDX-License-Identifier: Apache-2.0
#include "host/pdf/TzPdfObject.h"

#include <qpdf/QPDFObjectHandle.hh>

#include "host/pdf/TzPdfGuard.h"

namespace {

using Handle = QPDFObjectHandle;

std::string MakeKey(std::string_view name) { return "/" + std::string(name); }

void Require(bool holds, const char* kind) {
  if (!holds) throw TzPdfFailure(std::string("an object isn't ") + kind);
}

int MakeIndex(std::size_t index) { return static_cast<int>(index); }

}  // namespace

TzPdfObject::TzPdfObject() : TzPdfObject(Handle::newNull()) {}

TzPdfObject::TzPdfObject(const QPDFObjectHandle& object) : handle(std::make_shared<Handle>(object)) {}

TzPdfObject TzPdfObject::NewName(std::string_view name) {
  return TzPdfObject(Handle::newName(MakeKey(name)));
}

TzPdfObject TzPdfObject::NewString(std::string_view bytes) {
  return TzPdfObject(Handle::newString(std::string(bytes)));
}

TzPdfObject TzPdfObject::NewInteger(long long value) { return TzPdfObject(Handle::newInteger(value)); }

TzPdfObject TzPdfObject::NewDictionary() { return TzPdfObject(Handle::newDictionary()); }

TzPdfObject TzPdfObject::NewArray() { return TzPdfObject(Handle::newArray()); }

bool TzPdfObject::IsNull() const {
  return GuardPdf([&] { return handle->isNull(); });
}

bool TzPdfObject::IsDictionary() const {
  return GuardPdf([&] { return handle->isDictionary(); });
}

bool TzPdfObject::IsArray() const {
  return GuardPdf([&] { return handle->isArray(); });
}

bool TzPdfObject::IsString() const {
  return GuardPdf([&] { return handle->isString(); });
}

bool TzPdfObject::IsName(std::string_view name) const {
  return GuardPdf([&] { return handle->isNameAndEquals(MakeKey(name)); });
}

bool TzPdfObject::IsTrue() const {
  return GuardPdf([&] { return handle->isBool() && handle->getBoolValue(); });
}

bool TzPdfObject::IsIndirect() const { return handle->isIndirect(); }

int TzPdfObject::GetNumber() const { return handle->getObjectID(); }

std::string TzPdfObject::GetBytes() const {
  return GuardPdf([&] { return handle->isString() ? handle->getStringValue() : std::string(); });
}

std::string TzPdfObject::GetText() const {
  return GuardPdf([&] { return handle->isString() ? handle->getUTF8Value() : std::string(); });
}

long long TzPdfObject::GetInteger() const {
  return GuardPdf([&] { return handle->isInteger() ? handle->getIntValue() : 0; });
}

TzPdfObject TzPdfObject::Get(std::string_view key) const {
  return GuardPdf(
      [&] { return handle->isDictionary() ? TzPdfObject(handle->getKey(MakeKey(key))) : TzPdfObject(); });
}

void TzPdfObject::Set(std::string_view key, const TzPdfObject& value) {
  GuardPdf([&] {
    Require(handle->isDictionary(), "a dictionary");
    handle->replaceKey(MakeKey(key), *value.handle);
  });
}

std::size_t TzPdfObject::GetCount() const {
  return GuardPdf(
      [&] { return handle->isArray() ? static_cast<std::size_t>(handle->getArrayNItems()) : 0U; });
}

TzPdfObject TzPdfObject::At(std::size_t index) const {
  if (index >= GetCount()) return {};
  return GuardPdf([&] { return TzPdfObject(handle->getArrayItem(MakeIndex(index))); });
}

void TzPdfObject::Append(const TzPdfObject& value) { Insert(GetCount(), value); }

void TzPdfObject::Insert(std::size_t index, const TzPdfObject& value) {
  GuardPdf([&] {
    Require(handle->isArray(), "an array");
    handle->insertItem(MakeIndex(index), *value.handle);
  });
}

void TzPdfObject::Replace(std::size_t index, const TzPdfObject& value) {
  GuardPdf([&] {
    Require(handle->isArray(), "an array");
    handle->setArrayItem(MakeIndex(index), *value.handle);
  });
}
