#pragma once

#include "binary/HexDocumentView.h"
#include "document/TextServices.h"

// What the documents of all tests of a program share. Fakes put their views in.
inline TextServices textServices;
inline HexServices hexServices;
