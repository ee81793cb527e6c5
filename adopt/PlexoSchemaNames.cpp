// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoSchemaNames.h"

#include <algorithm>
#include <array>
#include <string>

#include "check/PlexoCheckedPackage.h"

namespace {

constexpr std::array<std::string_view, 25> kAtTop = {
    "adlcp_rootv1p2.xsd",
    "adlcp_v1p3.xsd",
    "adlnav_v1p3.xsd",
    "adlseq_v1p3.xsd",
    "datatypes.dtd",
    "ims_xml.xsd",
    "imscp_rootv1p1p2.xsd",
    "imscp_v1p1.xsd",
    "imsmd_rootv1p2p1.xsd",
    "imsss_v1p0.xsd",
    "imsss_v1p0auxresource.xsd",
    "imsss_v1p0control.xsd",
    "imsss_v1p0delivery.xsd",
    "imsss_v1p0limit.xsd",
    "imsss_v1p0objective.xsd",
    "imsss_v1p0random.xsd",
    "imsss_v1p0rollup.xsd",
    "imsss_v1p0seqrule.xsd",
    "imsss_v1p0util.xsd",
    "lom.xsd",
    "lomcustom.xsd",
    "lomloose.xsd",
    "lomstrict.xsd",
    "xml.xsd",
    "xmlschema.dtd",
};
constexpr std::array<std::string_view, 15> kInFolders = {
    "common/anyelement.xsd",  "common/datatypes.xsd",  "common/elementnames.xsd", "common/elementtypes.xsd",
    "common/rootelement.xsd", "common/vocabtypes.xsd", "common/vocabvalues.xsd",  "extend/custom.xsd",
    "extend/strict.xsd",      "unique/loose.xsd",      "unique/strict.xsd",       "vocab/adlmd_vocabv1p0.xsd",
    "vocab/custom.xsd",       "vocab/loose.xsd",       "vocab/strict.xsd",
};

}  // namespace

bool PlexoSchemaNames::Has(std::string_view name, PlexoCourseEdition edition) {
  const std::string folded = PlexoCheckedPackage::FoldCase(name);
  if (std::find(kAtTop.begin(), kAtTop.end(), folded) != kAtTop.end()) return true;
  return edition == PlexoCourseEdition::Scorm2004 &&
         std::find(kInFolders.begin(), kInFolders.end(), folded) != kInFolders.end();
}
