#pragma once

// OLE Automation as the platform declares it.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <ole2.h>
#include <oleauto.h>
