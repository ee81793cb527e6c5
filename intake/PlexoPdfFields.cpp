// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoPdfFields.h"

#include <set>
#include <string>

namespace {

// Flags of an annotation (12.5.3) and of a text field (12.7.3.1, 12.7.4.3).
constexpr long long kHidden = 1 << 1;
constexpr long long kMultiline = 1 << 12;
constexpr long long kDoNotSpellCheck = 1 << 22;

struct Field {
  const char* name;
  /// A field of one line would lose the line ends of what it is given.
  bool hasLines;
};

constexpr Field kFields[] = {
    {"aicc_url", false}, {"aicc_sid", false}, {"session_id", false},     {"command", false},
    {"version", false},  {"aicc_data", true}, {"connectresponse", true}, {"isfdf", false},
};

/// The value under the key, which is made the given new object unless it is of the kind.
TzPdfObject Demand(TzPdfObject owner, const char* key, bool (TzPdfObject::*isOfKind)() const,
                   const TzPdfObject& made) {
  if (!(owner.Get(key).*isOfKind)()) owner.Set(key, made);
  return owner.Get(key);
}

TzPdfObject DemandDictionary(const TzPdfObject& owner, const char* key) {
  return Demand(owner, key, &TzPdfObject::IsDictionary, TzPdfObject::NewDictionary());
}

TzPdfObject DemandArray(const TzPdfObject& owner, const char* key) {
  return Demand(owner, key, &TzPdfObject::IsArray, TzPdfObject::NewArray());
}

/// The font that the fields name: a viewer may want to draw even what is hidden.
void DemandFont(TzPdfDocument& document, const TzPdfObject& form) {
  TzPdfObject fonts = DemandDictionary(DemandDictionary(form, "DR"), "Font");
  if (fonts.Has("Helv")) return;
  TzPdfObject font = TzPdfObject::NewDictionary();
  font.Set("Type", TzPdfObject::NewName("Font"));
  font.Set("Subtype", TzPdfObject::NewName("Type1"));
  font.Set("BaseFont", TzPdfObject::NewName("Helvetica"));
  font.Set("Encoding", TzPdfObject::NewName("WinAnsiEncoding"));
  fonts.Set("Helv", document.NewIndirect(font));
}

/// A field and its one annotation, merged.
TzPdfObject NewField(TzPdfDocument& document, const Field& field, const TzPdfObject& page) {
  TzPdfObject box = TzPdfObject::NewArray();
  for (int corner = 0; corner < 4; ++corner) box.Append(TzPdfObject::NewInteger(0));
  TzPdfObject made = TzPdfObject::NewDictionary();
  made.Set("FT", TzPdfObject::NewName("Tx"));
  made.Set("T", TzPdfObject::NewString(field.name));
  made.Set("Ff", TzPdfObject::NewInteger(kDoNotSpellCheck | (field.hasLines ? kMultiline : 0)));
  made.Set("V", TzPdfObject::NewString(""));
  made.Set("DA", TzPdfObject::NewString("/Helv 0 Tf 0 g"));
  made.Set("Type", TzPdfObject::NewName("Annot"));
  made.Set("Subtype", TzPdfObject::NewName("Widget"));
  made.Set("F", TzPdfObject::NewInteger(kHidden));
  made.Set("Rect", box);
  if (page.IsIndirect()) made.Set("P", page);
  return document.NewIndirect(made);
}

std::set<std::string> CollectNames(const TzPdfObject& fields) {
  std::set<std::string> names;
  for (std::size_t index = 0; index < fields.GetCount(); ++index) {
    names.insert(fields.At(index).Get("T").GetText());
  }
  return names;
}

}  // namespace

void PlexoPdfFields::AddMissing(TzPdfDocument& document) {
  const TzPdfObject page = document.GetPage(0);
  const TzPdfObject form = DemandDictionary(document.GetCatalog(), "AcroForm");
  TzPdfObject fields = DemandArray(form, "Fields");
  TzPdfObject annotations = DemandArray(page, "Annots");
  DemandFont(document, form);
  const std::set<std::string> present = CollectNames(fields);
  for (const Field& field : kFields) {
    if (present.contains(field.name)) continue;
    const TzPdfObject made = NewField(document, field, page);
    fields.Append(made);
    annotations.Append(made);
  }
}
