#pragma once

namespace KelStd::bench {

/// Resident memory of this process [KiB], from the kernel's own account.
long residentKiB();

} // namespace KelStd::bench
