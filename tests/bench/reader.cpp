#include "reader.h"

#include <oleacc.h>

namespace kx::test {
namespace {

VARIANT Child(long part) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = part;
    return child;
}

}  // namespace

Reader::Reader(HWND window) {
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                               reinterpret_cast<void**>(&object_));
}

Reader::~Reader() {
    if (object_) object_->Release();
}

template <class Call>
std::wstring Reader::Text(Call call, long part) const {
    BSTR text = nullptr;
    if (object_) (object_->*call)(Child(part), &text);
    const std::wstring result = text ? text : L"";
    SysFreeString(text);
    return result;
}

template <class Call>
long Reader::Number(Call call, long part) const {
    VARIANT number{};
    return object_ && (object_->*call)(Child(part), &number) == S_OK && number.vt == VT_I4 ? number.lVal : 0;
}

// Children that are windows have objects of their own.
long Reader::Parts() const {
    long count = 0;
    IDispatch* other = nullptr;
    if (object_ && object_->get_accChild(Child(1), &other) == S_FALSE) object_->get_accChildCount(&count);
    if (other) other->Release();
    return count;
}

std::wstring Reader::Name(long part) const { return Text(&IAccessible::get_accName, part); }
std::wstring Reader::Value(long part) const { return Text(&IAccessible::get_accValue, part); }
std::wstring Reader::Description(long part) const { return Text(&IAccessible::get_accDescription, part); }
long Reader::Role(long part) const { return Number(&IAccessible::get_accRole, part); }
long Reader::State(long part) const { return Number(&IAccessible::get_accState, part); }
HRESULT Reader::Act(long part) const { return object_ ? object_->accDoDefaultAction(Child(part)) : E_FAIL; }

HRESULT Reader::Set(const wchar_t* value, long part) const {
    const BSTR text = SysAllocString(value);
    const HRESULT result = object_ ? object_->put_accValue(Child(part), text) : E_FAIL;
    SysFreeString(text);
    return result;
}

HRESULT Reader::Ask() const {
    VARIANT state{};
    return object_ ? object_->get_accState(Child(0), &state) : E_FAIL;
}

}  // namespace kx::test
