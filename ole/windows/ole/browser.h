#pragma once

// The browser's interfaces as the platform declares them.

#include <ole/automation.h>

#include <exdisp.h>
#include <mshtml.h>
#include <ocidl.h>
#include <oleidl.h>
