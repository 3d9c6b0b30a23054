#pragma once

#include "lease/LidHelperRefusal.h"
#include "session/AwakeFailure.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The sentences that explain a failure in the panel.
namespace FailureText {

// A message from elsewhere and a refusal the app does not know are shown
// word for word; everything else in the app's own words.
LocalizedText describing(const AwakeFailure& failure);
LocalizedText describing(const LidHelperRefusal& refusal);

}  // namespace FailureText
}  // namespace wakeloft
