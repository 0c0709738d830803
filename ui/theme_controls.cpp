// Flat dark painting for the controls the platform does not darken itself:
// check boxes and radio buttons, group boxes, push buttons, combo boxes
// (where the "CFD" theme is unavailable), up-down controls and tabs; and the
// list-view subclass that gives the header its light text.
//
// Each control keeps its own behaviour; only WM_PAINT is replaced. Buttons
// repaint some states directly, outside WM_PAINT, so after any message that
// can change the look the control is invalidated and painted flat again.
#include <vssym32.h>

#include <string>

#include "ui/guarded.h"
#include "ui/theme.h"
#include "ui/theme_internal.h"

namespace vv {
namespace {

constexpr UINT_PTR kSubclassId = 0x5656;

int Scale(int pixels) {
    return MulDiv(pixels, static_cast<int>(ScreenDpi()), 96);
}

// A GDI object selected into a device context for the object's life.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), old_(SelectObject(dc, object)) {}
    ~Selected() { SelectObject(dc_, old_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// Owns a GDI object (may be null).
class GdiObject {
public:
    explicit GdiObject(HGDIOBJ object) : object_(object) {}
    ~GdiObject() {
        if (object_)
            DeleteObject(object_);
    }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    HGDIOBJ get() const { return object_; }

private:
    HGDIOBJ object_;
};

// A pen (of `width`) and, when `filled`, a brush of one colour, selected for
// the object's life. Members are released in reverse order: deselect first.
class Ink {
public:
    Ink(HDC dc, COLORREF colour, bool filled, int width = 1)
        : pen_(CreatePen(PS_SOLID, width, colour)),
          brush_(filled ? CreateSolidBrush(colour) : nullptr),
          penSelected_(dc, pen_.get()),
          brushSelected_(dc, filled ? brush_.get() : GetStockObject(NULL_BRUSH)) {}

private:
    GdiObject pen_;
    GdiObject brush_;
    Selected penSelected_;
    Selected brushSelected_;
};

void Frame(HDC dc, const RECT& rect, COLORREF colour) {
    FillSolid(dc, {rect.left, rect.top, rect.right, rect.top + 1}, colour);
    FillSolid(dc, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, colour);
    FillSolid(dc, {rect.left, rect.top, rect.left + 1, rect.bottom}, colour);
    FillSolid(dc, {rect.right - 1, rect.top, rect.right, rect.bottom}, colour);
}

enum class Direction { kUp, kDown, kLeft, kRight };

void DrawArrow(HDC dc, const RECT& rect, Direction direction, COLORREF colour) {
    const int cx = (rect.left + rect.right) / 2, cy = (rect.top + rect.bottom) / 2;
    const int w = rect.right - rect.left, h = rect.bottom - rect.top;
    int r = (w < h ? w : h) / 4;
    if (r < 2)
        r = 2;
    POINT points[3];
    switch (direction) {
    case Direction::kUp:
        points[0] = {cx - r, cy + r / 2};
        points[1] = {cx + r, cy + r / 2};
        points[2] = {cx, cy - r / 2};
        break;
    case Direction::kDown:
        points[0] = {cx - r, cy - r / 2};
        points[1] = {cx + r, cy - r / 2};
        points[2] = {cx, cy + r / 2};
        break;
    case Direction::kLeft:
        points[0] = {cx + r / 2, cy - r};
        points[1] = {cx + r / 2, cy + r};
        points[2] = {cx - r / 2, cy};
        break;
    case Direction::kRight:
        points[0] = {cx - r / 2, cy - r};
        points[1] = {cx - r / 2, cy + r};
        points[2] = {cx + r / 2, cy};
        break;
    }
    Ink ink(dc, colour, true);
    Polygon(dc, points, 3);
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, &text[0], static_cast<int>(text.size()))));
    return text;
}

COLORREF TextColour(HWND window) {
    return IsWindowEnabled(window) ? kDarkTextColour : kDarkDisabledTextColour;
}

// Hides the '&' underlines until the keyboard is used, as the system does.
UINT PrefixFlag(HWND window) {
    return (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) ? DT_HIDEPREFIX : 0;
}

// The size of a check-box glyph: the theme's at the recorded DPI, else 13
// pixels scaled.
int CheckBoxSize(HWND button, HDC dc) {
    const ThemeApi& api = Api(button);
    int size = Scale(13);
    if (HTHEME theme = api.getThemePartSize ? OpenTheme(button, L"BUTTON") : nullptr) {
        SIZE part = {};
        if (SUCCEEDED(api.getThemePartSize(theme, dc, BP_CHECKBOX, CBS_UNCHECKEDNORMAL, nullptr, TS_DRAW, &part)) &&
            part.cx > 0)
            size = part.cx;
        CloseTheme(theme);
    }
    return size;
}

void PaintCheckBox(HWND button, HDC dc, const RECT& client) {
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    const LONG type = style & BS_TYPEMASK;
    const bool radio = type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
    const LRESULT check = SendMessageW(button, BM_GETCHECK, 0, 0);
    const COLORREF colour = TextColour(button);

    FillSolid(dc, client, kDarkBackgroundColour);
    const int size = CheckBoxSize(button, dc);
    const int top = (client.top + client.bottom - size) / 2;
    RECT box = {client.left, top, client.left + size, top + size};
    if (radio) {
        Ink ink(dc, colour, false);
        Ellipse(dc, box.left, box.top, box.right, box.bottom);
        if (check == BST_CHECKED) {
            Ink dot(dc, colour, true);
            const int inset = size / 4 + 1;
            Ellipse(dc, box.left + inset, box.top + inset, box.right - inset, box.bottom - inset);
        }
    } else {
        Frame(dc, box, colour);
        if (check == BST_INDETERMINATE) {
            const int inset = size / 4 + 1;
            FillSolid(dc, {box.left + inset, box.top + inset, box.right - inset, box.bottom - inset}, colour);
        } else if (check == BST_CHECKED) {
            DrawCheckMark(dc, box, colour);
        }
    }

    RECT textRect = {box.right + Scale(4), client.top, client.right, client.bottom};
    const std::wstring text = WindowText(button);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    const UINT format = (style & BS_MULTILINE) ? DT_WORDBREAK : (DT_SINGLELINE | DT_VCENTER);
    DrawTextW(dc, text.c_str(), -1, &textRect, format | PrefixFlag(button));
    if (GetFocus() == button && !text.empty()) {
        RECT focus = textRect;
        DrawTextW(dc, text.c_str(), -1, &focus, format | DT_CALCRECT);
        if (!(style & BS_MULTILINE))  // DT_CALCRECT measures from the top; the text is centred
            OffsetRect(&focus, 0, (textRect.bottom - focus.bottom) / 2);
        InflateRect(&focus, 1, 1);
        DrawFocusRect(dc, &focus);
    }
}

void PaintGroupBox(HWND box, HDC dc, const RECT& client) {
    const std::wstring text = WindowText(box);
    SIZE extent = {};
    GetTextExtentPoint32W(dc, L"M", 1, &extent);
    RECT frame = client;
    frame.top += extent.cy / 2;
    Frame(dc, frame, kDarkDisabledTextColour);
    if (text.empty())
        return;
    RECT label = {client.left + Scale(8), client.top, client.right - Scale(8), client.top + extent.cy};
    DrawTextW(dc, text.c_str(), -1, &label, DT_SINGLELINE | DT_CALCRECT | PrefixFlag(box));
    InflateRect(&label, Scale(2), 0);
    FillSolid(dc, label, kDarkBackgroundColour);
    SetTextColor(dc, TextColour(box));
    SetBkMode(dc, TRANSPARENT);
    DrawTextW(dc, text.c_str(), -1, &label, DT_SINGLELINE | DT_CENTER | PrefixFlag(box));
}

void PaintPushButton(HWND button, HDC dc, const RECT& client) {
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
    const LONG type = style & BS_TYPEMASK;
    const bool emphasised = (state & BST_FOCUS) || type == BS_DEFPUSHBUTTON || type == BS_DEFSPLITBUTTON;

    FillSolid(dc, client, (state & BST_PUSHED) ? kDarkHighlightColour : kDarkBackgroundColour);
    Frame(dc, client, emphasised && IsWindowEnabled(button) ? kDarkTextColour : kDarkDisabledTextColour);

    RECT inner = client;
    InflateRect(&inner, -Scale(3), -Scale(3));
    HICON icon =
        (style & BS_ICON) ? reinterpret_cast<HICON>(SendMessageW(button, BM_GETIMAGE, IMAGE_ICON, 0)) : nullptr;
    if (icon) {
        ICONINFO info = {};
        BITMAP bitmap = {};
        if (GetIconInfo(icon, &info)) {
            GetObjectW(info.hbmColor ? info.hbmColor : info.hbmMask, sizeof bitmap, &bitmap);
            if (info.hbmColor)
                DeleteObject(info.hbmColor);
            if (info.hbmMask)
                DeleteObject(info.hbmMask);
        }
        const int w = bitmap.bmWidth, h = info.hbmColor ? bitmap.bmHeight : bitmap.bmHeight / 2;
        DrawIconEx(dc, (client.left + client.right - w) / 2, (client.top + client.bottom - h) / 2, icon, w, h, 0,
                   nullptr, DI_NORMAL);
    } else {
        const std::wstring text = WindowText(button);
        SetTextColor(dc, TextColour(button));
        SetBkMode(dc, TRANSPARENT);
        DrawTextW(dc, text.c_str(), -1, &inner, DT_SINGLELINE | DT_CENTER | DT_VCENTER | PrefixFlag(button));
    }
    if ((state & BST_FOCUS) && !(SendMessageW(button, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS))
        DrawFocusRect(dc, &inner);
}

void PaintComboBox(HWND combo, HDC dc, const RECT& client) {
    COMBOBOXINFO info = {};
    info.cbSize = sizeof info;
    if (!GetComboBoxInfo(combo, &info))
        return;
    const bool hasEdit = info.hwndItem && info.hwndItem != combo;
    if (hasEdit)  // the edit paints itself (through WM_CTLCOLOREDIT)
        ExcludeClipRect(dc, info.rcItem.left, info.rcItem.top, info.rcItem.right, info.rcItem.bottom);
    FillSolid(dc, client, kDarkBackgroundColour);
    Frame(dc, client, GetFocus() == combo ? kDarkTextColour : kDarkDisabledTextColour);
    DrawArrow(dc, info.rcButton, Direction::kDown, TextColour(combo));
    if (hasEdit)
        return;
    const std::wstring text = WindowText(combo);
    RECT textRect = info.rcItem;
    textRect.left += Scale(2);
    SetTextColor(dc, TextColour(combo));
    SetBkMode(dc, TRANSPARENT);
    DrawTextW(dc, text.c_str(), -1, &textRect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if (GetFocus() == combo && !SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0))
        DrawFocusRect(dc, &info.rcItem);
}

void PaintUpDown(HWND updown, HDC dc, const RECT& client) {
    const bool horizontal = (GetWindowLongW(updown, GWL_STYLE) & UDS_HORZ) != 0;
    RECT first = client, second = client;
    if (horizontal)
        first.right = second.left = (client.left + client.right) / 2;
    else
        first.bottom = second.top = (client.top + client.bottom) / 2;
    FillSolid(dc, client, kDarkBackgroundColour);
    Frame(dc, first, kDarkDisabledTextColour);
    Frame(dc, second, kDarkDisabledTextColour);
    const COLORREF colour = TextColour(updown);
    DrawArrow(dc, first, horizontal ? Direction::kLeft : Direction::kUp, colour);
    DrawArrow(dc, second, horizontal ? Direction::kRight : Direction::kDown, colour);
}

void PaintTab(HWND tab, HDC dc, const RECT& client) {
    FillSolid(dc, client, kDarkBackgroundColour);
    RECT page = client;
    TabCtrl_AdjustRect(tab, FALSE, &page);
    InflateRect(&page, Scale(2), Scale(2));
    Frame(dc, page, kDarkDisabledTextColour);

    const int selected = TabCtrl_GetCurSel(tab);
    const int count = TabCtrl_GetItemCount(tab);
    SetBkMode(dc, TRANSPARENT);
    for (int i = 0; i < count; ++i) {
        RECT rect;
        if (!TabCtrl_GetItemRect(tab, i, &rect))
            continue;
        wchar_t text[128] = {};
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 128;
        SendMessageW(tab, TCM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
        if (i == selected)
            InflateRect(&rect, Scale(2), Scale(2));
        FillSolid(dc, rect, i == selected ? kDarkHighlightColour : kDarkBackgroundColour);
        Frame(dc, rect, kDarkDisabledTextColour);
        SetTextColor(dc, TextColour(tab));
        DrawTextW(dc, text, -1, &rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER | PrefixFlag(tab));
    }
}

// A list view's header, painted whole: some platforms keep a light header
// under the light text the list asks for, which makes it unreadable.
void PaintHeader(HWND header, HDC dc, const RECT& client) {
    FillSolid(dc, client, kDarkBackgroundColour);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, kDarkTextColour);
    const int count = Header_GetItemCount(header);
    for (int i = 0; i < count; ++i) {
        RECT rect;
        if (!Header_GetItemRect(header, i, &rect) || rect.right <= rect.left)
            continue;
        wchar_t text[128] = {};
        HDITEMW item = {};
        item.mask = HDI_TEXT;
        item.pszText = text;
        item.cchTextMax = 128;
        SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
        RECT line = {rect.right - 1, rect.top + Scale(2), rect.right, rect.bottom - Scale(2)};
        FillSolid(dc, line, kDarkDisabledTextColour);
        rect.left += Scale(6);
        rect.right -= Scale(4);
        DrawTextW(dc, text, -1, &rect, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    }
    RECT bottom = {client.left, client.bottom - 1, client.right, client.bottom};
    FillSolid(dc, bottom, kDarkDisabledTextColour);
}

void PaintFlat(HWND window, HDC dc, FlatControl kind) {
    RECT client;
    GetClientRect(window, &client);
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    Selected selectedFont(dc, font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT));
    switch (kind) {
    case FlatControl::kCheckBox: PaintCheckBox(window, dc, client); break;
    case FlatControl::kGroupBox: PaintGroupBox(window, dc, client); break;
    case FlatControl::kPushButton: PaintPushButton(window, dc, client); break;
    case FlatControl::kComboBox: PaintComboBox(window, dc, client); break;
    case FlatControl::kUpDown: PaintUpDown(window, dc, client); break;
    case FlatControl::kTab: PaintTab(window, dc, client); break;
    case FlatControl::kHeader: PaintHeader(window, dc, client); break;
    case FlatControl::kList: break;
    }
}

// Messages after which a control may have drawn itself in light colours.
bool ChangesLook(UINT message) {
    switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CAPTURECHANGED:
    case WM_UPDATEUISTATE:
    case WM_MOUSELEAVE:
    case CB_SETCURSEL:
    case TCM_SETCURSEL: return true;
    default: return false;
    }
}

// The list view's header draws its text dark; make it light.
bool ColourHeaderText(LPARAM lParam, LRESULT* result) {
    auto* draw = reinterpret_cast<NMCUSTOMDRAW*>(lParam);
    if (!draw || draw->hdr.code != NM_CUSTOMDRAW)
        return false;
    wchar_t className[32] = {};
    GetClassNameW(draw->hdr.hwndFrom, className, 32);
    if (lstrcmpiW(className, WC_HEADERW) != 0)
        return false;
    if (draw->dwDrawStage == CDDS_PREPAINT) {
        *result = CDRF_NOTIFYITEMDRAW;
        return true;
    }
    if (draw->dwDrawStage == CDDS_ITEMPREPAINT) {
        SetTextColor(draw->hdc, kDarkTextColour);
        *result = CDRF_DODEFAULT;
        return true;
    }
    return false;
}

// BeginPaint and EndPaint around a WM_PAINT without a given DC; the update
// region is validated even when painting fails half-way.
class PaintScope {
public:
    PaintScope(HWND window, WPARAM givenDc)
        : window_(window),
          dc_(givenDc ? reinterpret_cast<HDC>(givenDc) : BeginPaint(window, &paint_)),
          own_(!givenDc) {}
    ~PaintScope() {
        if (own_)
            EndPaint(window_, &paint_);
    }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    HDC dc() const { return dc_; }

private:
    HWND window_;
    PAINTSTRUCT paint_ = {};
    HDC dc_;
    bool own_;
};

LRESULT FlatControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, FlatControl kind) {
    if (kind == FlatControl::kList) {
        LRESULT result = 0;
        if (message == WM_NOTIFY && ColourHeaderText(lParam, &result))
            return result;
    } else {
        switch (message) {
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: {
            PaintScope paint(window, wParam);
            if (paint.dc())
                PaintFlat(window, paint.dc(), kind);
            return 0;
        }
        case WM_PRINTCLIENT: PaintFlat(window, reinterpret_cast<HDC>(wParam), kind); return 0;
        default: break;
        }
    }
    const LRESULT result = DefaultSubclassProc(window, message, wParam, lParam);
    if (kind != FlatControl::kList && ChangesLook(message))
        InvalidateRect(window, nullptr, FALSE);
    return result;
}

LRESULT CALLBACK FlatControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                 DWORD_PTR data) {
    if (message == WM_NCDESTROY)
        RemoveSubclass(window, FlatControlProc, id);
    const auto kind = static_cast<FlatControl>(data);
    return Guarded<LRESULT>(0, [&] { return FlatControlMessage(window, message, wParam, lParam, kind); });
}

}  // namespace

void FillSolid(HDC dc, const RECT& rect, COLORREF colour) {
    SetBkColor(dc, colour);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

void DrawCheckMark(HDC dc, const RECT& box, COLORREF colour) {
    const int w = box.right - box.left, h = box.bottom - box.top;
    const int size = (w < h ? w : h) / 2;
    const int x = box.left + (w - size) / 2, y = box.top + (h - size) / 2;
    Ink ink(dc, colour, false, size / 5 + 1);
    const POINT points[] = {{x, y + size / 2}, {x + size / 3, y + size - 1}, {x + size, y}};
    Polyline(dc, points, 3);
}

void SubclassFlat(HWND control, FlatControl kind) {
    if (SubclassWindow(control, FlatControlProc, kSubclassId, static_cast<DWORD_PTR>(kind)))
        InvalidateRect(control, nullptr, TRUE);
}

}  // namespace vv
