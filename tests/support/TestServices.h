#pragma once

#include "TestRecovery.h"
#include "binary/HexDocumentView.h"
#include "document/TextServices.h"

// What the documents of all tests of a program share. Fakes put their views in.
inline TextServices textServices{recoveryServices, nullptr, nullptr, {}};
inline HexServices hexServices{recoveryServices};
