// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoPdfScripts.h"

#include <string_view>

#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfNameTree.h"

namespace {

constexpr std::size_t kMostStringBytes = 256;
/// A page has a few actions. A chain that goes on and on leads back to itself, or is meant to keep us busy.
constexpr int kMostActions = 100;

TzPdfObject NewScriptText(TzPdfDocument& document, std::string_view script) {
  if (script.size() <= kMostStringBytes) return TzPdfObject::NewString(script);
  TzPdfObject filters = TzPdfObject::NewArray();
  filters.Append(TzPdfObject::NewName("FlateDecode"));
  TzPdfObject attributes = TzPdfObject::NewDictionary();
  attributes.Set("Filter", filters);
  return document.NewStream(script, attributes);
}

void PrependPageAction(TzPdfObject page, TzPdfObject action) {
  if (!page.Get("AA").IsDictionary()) page.Set("AA", TzPdfObject::NewDictionary());
  TzPdfObject actions = page.Get("AA");
  if (actions.Has("O")) action.Set("Next", actions.Get("O"));
  actions.Set("O", action);
}

}  // namespace

bool PlexoPdfScripts::AddDocumentScript(TzPdfDocument& document, const char* name, const char* script) {
  try {
    const TzPdfObject action = NewScriptAction(document, script);
    TzPdfNameTree tree = TzPdfNameTree::Find(document, "JavaScript");
    if (!tree.IsValid()) tree = TzPdfNameTree::Create(document, "JavaScript");
    tree.Put(name, action);
    return true;
  } catch (const TzPdfFailure&) {
    return false;
  }
}

bool PlexoPdfScripts::AddPageOpenScript(TzPdfDocument& document, TzPdfObject page, const char* script) {
  try {
    TzPdfObject action = FindPageScriptAction(page);
    if (!action.IsNull()) {
      SetActionScript(document, action, script);
      return true;
    }
    action = NewScriptAction(document, script);
    if (action.IsNull()) return false;
    PrependPageAction(std::move(page), action);
    return true;
  } catch (const TzPdfFailure&) {
    return false;
  }
}

TzPdfObject PlexoPdfScripts::FindPageScriptAction(const TzPdfObject& page) {
  TzPdfObject action = page.Get("AA").Get("O");
  for (int count = 0; count < kMostActions && !action.IsNull(); ++count) {
    if (action.Get("S").IsName("JavaScript")) return action;
    action = action.Get("Next");
  }
  return {};
}

TzPdfObject PlexoPdfScripts::NewScriptAction(TzPdfDocument& document, const char* script) {
  try {
    TzPdfObject action = document.NewIndirect(TzPdfObject::NewDictionary());
    action.Set("S", TzPdfObject::NewName("JavaScript"));
    SetActionScript(document, action, script);
    return action;
  } catch (const TzPdfFailure&) {
    return {};
  }
}

void PlexoPdfScripts::SetActionScript(TzPdfDocument& document, TzPdfObject action, const char* script) {
  if (script == nullptr) return;
  try {
    action.Set("JS", NewScriptText(document, script));
  } catch (const TzPdfFailure&) {
    // The action stays as it was: without a text, or with the one that the author's document has.
    return;
  }
}
