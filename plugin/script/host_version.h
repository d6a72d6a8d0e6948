// SPDX-License-Identifier: MIT
#pragma once

namespace quillbar {

/// The host's version as it reports it, year and release: 2013.4 for 2013 release 4. 0.0 before the
/// entry point was called and when the host doesn't say.
inline double hostVersion = 0.0;

}  // namespace quillbar
