// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Namespaces as published with the schema documents of SCORM 1.2 and SCORM 2004 3rd Edition.
namespace plexo_namespaces {

inline constexpr const char* kXsi = "http://www.w3.org/2001/XMLSchema-instance";

/// imscp_v1p1.xsd, lom.xsd, adlcp_v1p3.xsd, imsss_v1p0.xsd, adlseq_v1p3.xsd, adlnav_v1p3.xsd
inline constexpr const char* kImscp2004 = "http://www.imsglobal.org/xsd/imscp_v1p1";
inline constexpr const char* kLom = "http://ltsc.ieee.org/xsd/LOM";
inline constexpr const char* kAdlcp2004 = "http://www.adlnet.org/xsd/adlcp_v1p3";
inline constexpr const char* kImsss = "http://www.imsglobal.org/xsd/imsss";
inline constexpr const char* kAdlseq = "http://www.adlnet.org/xsd/adlseq_v1p3";
inline constexpr const char* kAdlnav = "http://www.adlnet.org/xsd/adlnav_v1p3";

/// imscp_rootv1p1p2.xsd, imsmd_rootv1p2p1.xsd, adlcp_rootv1p2.xsd
inline constexpr const char* kImscp12 = "http://www.imsproject.org/xsd/imscp_rootv1p1p2";
inline constexpr const char* kImsmd12 = "http://www.imsglobal.org/xsd/imsmd_rootv1p2p1";
inline constexpr const char* kAdlcp12 = "http://www.adlnet.org/xsd/adlcp_rootv1p2";

}  // namespace plexo_namespaces
