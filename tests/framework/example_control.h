// A small control that uses all of the plumbing, as a host would write one: a lamp with a push button that is painted by
// the control, and a tooltip.
#pragma once

#include <bench/bench.h>
#include <kxdevui/framework/ui_window.h>

#include <map>

class ExampleLamp : public CKxDevUI_Base {
public:
    static constexpr int ButtonId = 10200;
    static constexpr COLORREF Face = RGB(10, 20, 30), ButtonFace = RGB(200, 100, 50);

    explicit ExampleLamp(kx::test::Recorder& record) : m_record(record) {}
    ~ExampleLamp() override { Destroy(); }

    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // In the place of a dialog's placeholder.
    HWND Create(HWND parent, HWND placeholder);
    void Destroy();
    HWND Button() const { return m_button; }

protected:
    virtual void OnToggle() {}

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
    kx::ui::Handled Handle(const kx::ui::Message& message);
    kx::ui::Handled HandleButton(const kx::ui::Message& message);

    static ATOM m_Atom;
    static std::map<HWND, ExampleLamp*> m_Instances;

    kx::test::Recorder& m_record;
    kx::ui::Brush m_face{CreateSolidBrush(Face)};
    kx::ui::Brush m_buttonFace{CreateSolidBrush(ButtonFace)};
    HWND m_button = nullptr;
};
