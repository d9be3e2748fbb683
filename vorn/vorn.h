// SPDX-License-Identifier: MIT
#pragma once

/// The umbrella header: all that an application includes.
#include "vorn/api.h"
