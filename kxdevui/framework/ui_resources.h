// For authors of controls: dialog templates, found in the language of the user interface.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// Which of the languages a resource exists in is the best for a user: the very language, another of the same primary
// language, then the same two for the fallback, then a resource of no language. -1 when none will do.
KXDEVUI_API int ChooseLanguage(std::span<const LANGID> available, LANGID current, LANGID fallback) noexcept;

// The dialog template in the module (null: the program), chosen in that way for CKxLocale's languages. Null when there
// is none. The memory is the module's.
KXDEVUI_API const DLGTEMPLATE* FindDialogTemplate(const wchar_t* name, HINSTANCE module) noexcept;

// A copy of the template that creates a hidden child window whatever the original is, so that a dialog that is to be
// taken apart is never seen, nor takes the activation from the host. Empty when the template is not there.
KXDEVUI_API std::vector<std::byte> CopyTemplateAsHiddenChild(const wchar_t* name, HINSTANCE module);

}  // namespace kx::ui
