// Fitting the theme to the screen.
#include "rendering/fit.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "platform/windows.h"
#include "settings/config.h"
#include "state/form_main.h"
#include "state/paths.h"

namespace {

struct Size {
    double width = 0;
    double height = 0;
};

// Deliberate D-05: the theme's height is the Command block's top plus the height of the Main block's picture.
// One would expect both from one block; themes are made for this combination.
Size ThemeSize(const Form_Main& form) {
    if (form.settings.ShowMainZone != u"true") {
        return {static_cast<double>(form.theme.ZoneList.W), static_cast<double>(form.theme.ZoneList.H)};
    }
    return {static_cast<double>(form.theme.BlockMain.X) + form.assets.ImgMain.Width(),
            static_cast<double>(form.theme.BlockCommand.Y) + form.assets.ImgMain.Height()};
}

// `place` returns where the divisor comes from.
template <typename Place>
double Divide(double a, double b, const Place& place) {
    if (b == 0) {
        throw RunTimeError(kDivisionByZero, place() + QStringLiteral(": it is 0"));
    }
    return a / b;
}

// Returns what a size of the theme consists of: a key of the track zone or, with the Main block, the corner
// of a block and the size of its picture.
QString PlaceOfSize(Form_Main& form, const char* zone, const char* corner, const char* size) {
    const QString file = ThemeFile(form, QStringLiteral("theme.ini"));
    if (form.settings.ShowMainZone != u"true") {
        return QStringLiteral("%1, [zonelist] %2 (expected 1 or more)").arg(file, QLatin1StringView(zone));
    }
    const bool isHorizontal = form.settings.Orientation == u"horizontal";
    return QStringLiteral("%1, [%2] %3 and the %4 of main.png (expected a sum of 1 or more)")
        .arg(file, isHorizontal ? QStringLiteral("horitontal") : QStringLiteral("vertical"),
             QLatin1StringView(corner), QLatin1StringView(size));
}

auto PlaceOfWidth(Form_Main& form) {
    return [&form] { return PlaceOfSize(form, "ZoneListWidth", "BlockMainX", "width"); };
}

auto PlaceOfHeight(Form_Main& form) {
    return [&form] { return PlaceOfSize(form, "ZoneListHeight", "BlockCommandY", "height"); };
}

// Converts a length that came from a key of config.ini to whole pixels.
int Pixels(const Form_Main& form, QStringView key, double length) {
    const auto where = [&] { return ConfigPlace(form, u"Main", key) + QStringLiteral(" (expected pixels)"); };
    return TellingWhere(where, [&] { return CInt32(length).value(); });
}

// The smallest PositionWidth and PositionHeight that are accepted.
constexpr double kSmallestArea = 480;

// Returns the size of the picture area in screen pixels.
Size PictureSize(Form_Main& form, const Size& theme) {
    const Size window{static_cast<double>(form.shell.MainWindow.Width),
                      static_cast<double>(form.shell.MainWindow.Height)};
    const bool given = !form.settings.PositionWidth.isEmpty() && !form.settings.PositionHeight.isEmpty();
    if (given && ConfigNumber(form, u"PositionWidth", form.settings.PositionWidth) >= kSmallestArea &&
        ConfigNumber(form, u"PositionHeight", form.settings.PositionHeight) >= kSmallestArea) {
        return {ConfigNumber(form, u"PositionWidth", form.settings.PositionWidth),
                ConfigNumber(form, u"PositionHeight", form.settings.PositionHeight)};
    }
    const double ratio = Divide(theme.width, theme.height, PlaceOfHeight(form));
    if (Divide(window.width, ratio, PlaceOfWidth(form)) <= window.height) {
        return window;
    }
    // Deliberate D-06: an area that is set too small is corrected by a division. One would expect a
    // multiplication, as in the other case; set-ups in the field rely on the resulting area.
    return {given ? window.width / ratio : window.height * ratio, window.height};
}

void PlacePictureArea(Form_Main& form, const Size& theme) {
    const Size area = PictureSize(form, theme);
    const int width = Pixels(form, u"PositionWidth", area.width);
    const int height = Pixels(form, u"PositionHeight", area.height);
    TellingWhere(
        [&] { return ConfigPlace(form, u"Main", u"PositionWidth") + QStringLiteral(" and PositionHeight"); },
        [&] { Resize(form.frame.Picture_Main, width, height); });
    const double left = form.settings.PositionLeft.isEmpty()
                            ? form.shell.MainWindow.Width / 2.0 - form.frame.Picture_Main.Width() / 2.0
                            : ConfigNumber(form, u"PositionLeft", form.settings.PositionLeft);
    const double top = form.settings.PositionTop.isEmpty()
                           ? form.shell.MainWindow.Height / 2.0 - form.frame.Picture_Main.Height() / 2.0
                           : ConfigNumber(form, u"PositionTop", form.settings.PositionTop);
    form.frame.Picture_Main.Left = Pixels(form, u"PositionLeft", left);
    form.frame.Picture_Main.Top = Pixels(form, u"PositionTop", top);
}

// Returns a coordinate or length of the video surface in whole pixels; `otherwise` when it is not set.
int VideoPlace(const Form_Main& form, QStringView key, const QString& value, int otherwise) {
    return value.isEmpty() ? otherwise : ConfigPixels(form, key, value);
}

void PlaceVideoSurface(Form_Main& form) {
    WindowPlace& video = form.frame.Picture_MainVideo;
    const Surface& area = form.frame.Picture_Main;
    video.Left = VideoPlace(form, u"VideoPositionLeft", form.settings.VideoPositionLeft, area.Left);
    video.Top = VideoPlace(form, u"VideoPositionTop", form.settings.VideoPositionTop, area.Top);
    video.Width = VideoPlace(form, u"VideoPositionWidth", form.settings.VideoPositionWidth, area.Width());
    if (form.settings.VideoPositionHeight.isEmpty()) {
        video.Height = area.Height();
    } else {
        // Deliberate D-07: a value for the height is assigned to the width, and the height does not change.
        // One would expect the height to be set; cabinets are set up with this behaviour.
        video.Width = VideoPlace(form, u"VideoPositionHeight", form.settings.VideoPositionHeight, 0);
    }
    form.windows.PlaceVideoSurface(video.Rectangle());
}

void PrepareCaches(Form_Main& form) {
    const auto where = [&] {
        return ThemeFile(form, QStringLiteral("theme.ini")) +
               QStringLiteral(", [zonelist] ZoneListWidth and ZoneListHeight");
    };
    TellingWhere(where, [&] {
        Resize(form.frame.Picture_Cache, form.theme.ZoneList.W.value(), form.theme.ZoneList.H.value());
        Resize(form.frame.Picture_CacheHilight, form.theme.ZoneList.W.value(), form.theme.ZoneList.H.value());
    });
    form.frame.Picture_Cache.stretchMode = kStretchHalftone;
    form.frame.Picture_CacheHilight.stretchMode = kStretchHalftone;
    form.frame.Picture_CacheTmp.stretchMode = kStretchHalftone;
    form.frame.Picture_CacheTmp2.stretchMode = kStretchHalftone;
}

void FitScale(Form_Main& form, const Size& theme) {
    form.frame.ZoneScaleX = Divide(form.frame.Picture_Main.Width(), theme.width, PlaceOfWidth(form));
    form.frame.ZoneScaleY = Divide(form.frame.Picture_Main.Height(), theme.height, PlaceOfHeight(form));
    if (form.frame.ZoneScaleX <= form.frame.ZoneScaleY) {
        form.frame.ZoneScaleY = form.frame.ZoneScaleX;
    } else {
        form.frame.ZoneScaleX = form.frame.ZoneScaleY;
    }
    if (form.frame.ZoneScaleX != 1.0) {
        form.frame.Picture_Main.stretchMode = kStretchHalftone;
    }
}

} // namespace

void FitToScreen(Form_Main& form) {
    const Size theme = ThemeSize(form);
    PlacePictureArea(form, theme);
    PlaceVideoSurface(form);
    PrepareCaches(form);
    form.touch.TouchScrollOffset = 0;
    FitScale(form, theme);
}
