// The device's category labels, wherever this device keeps them.
#pragma once

#include <vector>

#include "settings/volume.h"
#include "store/store_session.h"

namespace orvello {

// Replaces `labels`. False when something could not be read, which has been shown; they are the
// rest.
bool read_device_labels(const SettingsVolume& volume, int platform_generation,
                        StoreSession& session, std::vector<Text>& labels);

}  // namespace orvello
