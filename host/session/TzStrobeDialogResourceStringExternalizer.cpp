// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzStrobeDialogResourceStringExternalizer.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "host/xml/TzXMLDOMCreator.h"

namespace {

class TextSerializer : public ITzDOMSerializer {
 public:
  void Write(const TzString& piece) override { text += piece; }

  TzString text;
};

}  // namespace

TzString TzStrobeDialogResourceStringExternalizer::GetXMLForResourceStrings(
    const std::vector<TzString>& keys) const {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  TzXMLDOMCreator document;
  const TzDOMNode strings = document.CreateElementNode("strings", {});
  for (const TzString& key : keys) {
    const TzDOMNode string = document.CreateElementNode("string", strings);
    document.CreateAttributeNode("key", key, string);
    document.CreateTextNode(dictionary != nullptr ? dictionary->GetString(key) : key, string);
  }
  TextSerializer serializer;
  document.Serialize(serializer, 0, 0);
  return serializer.text;
}
