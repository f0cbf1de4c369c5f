#pragma once
// Whether today's page comes up with the program: a choice of the user on this machine.
#include "forms/Ports.h"

namespace koben {

/// The herd list alone, the page beside it, or the page instead of it.
enum class Startseite { Liste, Daneben, Statt };

/// `Liste` where nothing was chosen.
Startseite readStartseite(Platform& platform);
void keepStartseite(Platform& platform, Startseite choice);

}  // namespace koben
