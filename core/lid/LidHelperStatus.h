#pragma once

namespace wakeloft {

// Where the helper daemon's registration with the system stands.
enum class LidHelperStatus { enabled, requiresApproval, notRegistered, notFound };

}  // namespace wakeloft
