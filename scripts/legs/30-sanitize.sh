# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# The suite under AddressSanitizer and UndefinedBehaviorSanitizer.

register_leg sanitize other "the same suite under AddressSanitizer and UndefinedBehaviorSanitizer" run_native_tests
