// The pages of the host's window.
#pragma once

#include <memory>
#include <vector>

#include "page.h"

class GalleryDevices;
class HostMicroscope;

// All pages, in the order of their buttons; the devices have to outlive them.
std::vector<std::unique_ptr<Page>> MakePages(HostMicroscope& microscope, GalleryDevices& devices);
