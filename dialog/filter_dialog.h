// The object of one run of the main dialog: made by the filter run with the host's
// window as parent, given the host's two colours, run modally, read for the chosen tile
// and torn down. In between it owns every window, control, menu and the colour library
// the user sees and edits. The controls are no child windows: each paints into its page
// at once, and the page's dialog procedure hands it the mouse.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "color/color_library.h"
#include "color/palette.h"
#include "color/pattern.h"
#include "controls/color_pair_control.h"
#include "controls/cursor_set.h"
#include "controls/dpi_scale.h"
#include "controls/fore_back_box.h"
#include "controls/grid_editor.h"
#include "controls/offscreen_bitmap.h"
#include "controls/rgb_slider_panel.h"
#include "controls/split_color_box.h"
#include "controls/swatch_grid.h"
#include "controls/swatch_layout.h"
#include "controls/tool_group.h"
#include "storage/library_file.h"
#include "storage/list_file.h"

namespace tessellum {

struct PromptTexts;

// A page posts this to itself on WM_ERASEBKGND, so that it paints again after the erase.
constexpr UINT WM_REPAINTPAGE = 0x9999;

class FilterDialog {
public:
    explicit FilterDialog(HWND parent);
    ~FilterDialog();  // the teardown: saves the library and "Sizing", releases all
    FilterDialog(const FilterDialog&) = delete;
    FilterDialog& operator=(const FilterDialog&) = delete;

    void SetHostForeColor(uint8_t red, uint8_t green, uint8_t blue) {
        hostForeColor = {red, green, blue};
    }
    void SetHostBackColor(uint8_t red, uint8_t green, uint8_t blue) {
        hostBackColor = {red, green, blue};
    }
    bool RunModal();  // true when the dialog ended with Fill
    const Pattern* ResultPattern() const { return resultPattern; }
    uint8_t ResultGridSize() const { return resultGridSize; }

    // Dialog construction, run and sizing.
    void InitDialog(HWND window);
    // The dialog moved to a display of another scale: every self-drawn control takes its
    // sizes, pictures and font for `newDpi` from where the placeholders now stand.
    void ChangeDpi(int32_t newDpi);
    int32_t Dpi() const { return dpi; }
    void AbortDialog();
    void RefreshDialog();
    void DrawMainPreview();
    Pattern* CurrentPattern();
    uint8_t CurrentGridSize();
    void SetActiveTab(int32_t index);
    void ToggleSizing();
    void ApplySizing();
    void ShowListMenu();
    void ShowGridSizeMenu();
    void ShowPaletteMenu();

    // The Color Picker page.
    void ShowColorPickerPage();
    void DrawPickerPreview();
    void SlidersChanged();
    void ConvertToWebSafe();
    void LoadSlidersFromPattern();
    void ShowNewColor(uint8_t flag);

    // The Pattern Fill page and the Pattern in force.
    ColorEntry* SelectedEntry();
    void ResolveCurrentPattern();
    void SetGridSize(uint8_t size, uint8_t storeInEntry);
    void ChooseGridSize(uint8_t size);
    void RefreshGridMenu();
    void ShowGridSizeText();
    void ShowPatternFillPage();
    void SetPickerColor(uint8_t red, uint8_t green, uint8_t blue);
    void SetEditorTool(int32_t tool);
    void PickSwatch();

    // Lists and colours made, named and deleted; lists exchanged as files.
    void NewList();
    void NameList();
    void DeleteList();
    void NewColor();
    void NameColor();
    void DeleteColor();
    void ImportList();
    void ExportList();

    // Colour tables loaded into the library as palettes, and taken out again.
    void LoadPalette();
    void UnloadPalette();

    // What the library holds, shown and selected.
    void SelectList(int id);
    void RefreshLists();
    void RefreshColorBox();
    void SelectColor(int row);
    void ColorSelectionChanged();
    void ChoosePalette(int id);
    void RefreshPalettes();
    void ShowPaletteName();
    void ApplyPalette();

    // What the pages' procedures reach.
    GridEditor* Editor() { return gridEditor.get(); }
    SwatchGrid* Swatches() { return swatchGrid.get(); }
    RgbSliderPanel* Sliders() { return sliderPanel.get(); }
    ColorPairControl* ColorPair() { return colorPair.get(); }
    ForeBackBox* ForeBack() { return foreBackBox.get(); }
    ToolGroup* Tools() { return toolGroup.get(); }
    CursorSet* Cursors() { return cursors.get(); }
    ListFile* List() { return listFile.get(); }
    int32_t CurrentTool() const { return currentTool; }
    HWND Window() const { return dialogWindow; }
    bool Ready() const { return built; }

private:
    // Submenu `index` of a new copy of menu 102; the copy it replaces for that submenu
    // is destroyed once no submenu in use comes from it.
    HMENU FreshSubmenu(int index);
    void ShowPage(HWND show, HWND hide);
    // The name prompt of a command over this dialog: false on Cancel. `current` is the
    // initial text where the command has none of its own.
    bool AskForName(const PromptTexts& texts, char* buffer, const char* current);
    // A Yes/No question over this dialog: true on Yes.
    bool Confirm(const char* text, const char* caption);
    ColorList* ListInForce() const;
    HWND Item(int id) const { return GetDlgItem(dialogWindow, id); }
    int32_t Px(int32_t value) const { return ScaleToDpi(value, dpi); }  // 96-DPI pixels, scaled
    uint32_t Line() const { return static_cast<uint32_t>(LineWidth(dpi)); }
    // The controls whose size is the DPI's, placed from the placeholders as they stand.
    void MakeToolGroup();
    void MakeSplitColorBox();
    void MakeColorPair();
    void MakeForeBackBox();
    void MakePickerBitmap();
    void PlaceSliders();
    RECT PageRect();  // where a page stands in the tab control
    SwatchCells SwatchCellsIn(const RECT& place);

    HWND parentWindow = nullptr;
    HWND dialogWindow = nullptr;
    HWND colorPickerPage = nullptr;
    HWND patternFillPage = nullptr;
    uint8_t sizing = 1;
    std::unique_ptr<OffscreenBitmap> previewBitmap;
    int32_t previewLeft = 0;
    int32_t previewTop = 0;
    std::unique_ptr<OffscreenBitmap> pickerBitmap;
    int32_t activeTab = 0;
    std::unique_ptr<RgbSliderPanel> sliderPanel;
    Pattern workPattern = {};
    Pattern* currentPattern = nullptr;
    uint8_t currentGridSize = 2;
    uint8_t resultGridSize = 2;
    uint8_t workGridSize = 2;
    uint8_t smallBitmapsLoaded = 0;
    std::unique_ptr<GridEditor> gridEditor;
    std::unique_ptr<LibraryFile> libraryFile;
    std::unique_ptr<ColorLibrary> library;
    std::unique_ptr<SwatchGrid> swatchGrid;
    std::unique_ptr<Palette> webSafePalette;
    HMENU menuBar = nullptr;
    HMENU listMenu = nullptr;
    HMENU gridMenu = nullptr;
    HMENU paletteMenu = nullptr;
    int32_t selectedList = -1;
    int32_t selectedPalette = -1;
    std::unique_ptr<ToolGroup> toolGroup;
    std::unique_ptr<SplitColorBox> splitColorBox;
    std::unique_ptr<ColorPairControl> colorPair;
    std::unique_ptr<ForeBackBox> foreBackBox;
    std::unique_ptr<CursorSet> cursors;
    int32_t currentTool = 0;
    Pattern* resultPattern = nullptr;
    Rgb8 hostForeColor = {0, 0, 0};
    Rgb8 hostBackColor = {255, 255, 255};
    char libraryPath[272] = {};
    std::unique_ptr<ListFile> listFile;

    // Every copy of menu 102 loaded for the popups; each is destroyed when no submenu
    // in use comes from it any more, and all at teardown.
    HMENU menuCopies[3] = {};  // the copies behind listMenu, paletteMenu, gridMenu
    bool built = false;        // every object of the start exists; painting may begin
    int32_t dpi = kBaseDpi;    // of the dialog's window
};

// The one dialog alive; the dialog procedures find it through this.
extern FilterDialog* activeDialog;

INT_PTR CALLBACK MainDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK ColorPickerPageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK PatternFillPageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// One edge of a control's outer rectangle in the client coordinates of `parent`.
int32_t ControlLeft(HWND parent, HWND control);
int32_t ControlTop(HWND parent, HWND control);
int32_t ControlRight(HWND parent, HWND control);
int32_t ControlBottom(HWND parent, HWND control);

}  // namespace tessellum
