#pragma once

#include <string>

#include "array/model/Snapshot.h"

namespace cli {

// The object that a text on the command line names: by its key text ("Ovrin:" and eight hexadecimal
// digits) or as people know it. A text that names nothing throws DRAVOperationFailedException with
// ErrorCode::NoSuchObject, which quotes it; so does one that names several.
//
// A volume is known by its name (hexadecimal text), or by its element name if no other has the
// same; an endpoint by its portal, such as 192.0.2.10:3260; a session by its key text only.
array::Id findVolume(const array::Snapshot& snapshot, const std::string& text);
array::Id findTarget(const array::Snapshot& snapshot, const std::string& text);
array::Id findInitiator(const array::Snapshot& snapshot, const std::string& text);
array::Id findEndpoint(const array::Snapshot& snapshot, const std::string& text);
array::Id findSession(const array::Snapshot& snapshot, const std::string& text);

// A logical unit by its key text where there is no LUN, else by its target and LUN.
array::Id findUnit(const array::Snapshot& snapshot, const std::string& keyOrTarget,
                   const std::string& lun);

} // namespace cli
