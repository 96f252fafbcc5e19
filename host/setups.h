// What stands in the positions of a device, to be asked for as a whole and taken back in one step: as a value, the
// number of a setup that the host has seen in it.
#pragma once

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/setup/devgui_setup.h>

#include "wishes.h"

// The setup that the changes of a record make of the present one.
Asked SetupOf(CKxSimNosepiece& turret, const SKxObjectiveSetup& record);
Asked SetupOf(CKxSimFilterChanger& wheel, const SKxFilterSetup& record);
Asked SetupOf(const SKxCondenserSetup& record);
