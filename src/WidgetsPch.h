// Headers that nearly every screen reads; compiled once.
#pragma once
#include "CorePch.h"
#include <QtWidgets>
