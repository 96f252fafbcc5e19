#include "controls_page.h"

void ControlsPage::Fill() {}
