// The pages of the host's window.
#pragma once

#include <memory>
#include <vector>

#include "page.h"

class Microscope;

// All pages, in the order of their buttons; each shows devices of the microscope, which has to outlive it.
std::vector<std::unique_ptr<Page>> MakePages(Microscope& microscope);
