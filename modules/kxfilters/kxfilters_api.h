// The exports of the filters module.
#pragma once

#ifdef KXFILTERS_BUILDING
#define KXFILTERS_API __declspec(dllexport)
#else
#define KXFILTERS_API __declspec(dllimport)
#endif
