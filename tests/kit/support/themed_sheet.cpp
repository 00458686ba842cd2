// SPDX-License-Identifier: LGPL-2.1-or-later

// themed_sheet FILE FRAMEWORK: writes a picture of drawables of a framework package, each in several of its themes. The
// name of a drawable is red when a part of it could not be drawn in one of the themes.

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QGuiApplication>
#include <QPainter>

#include <cstdio>
#include <iterator>

using SorrelKit::DrawableRenderer;
using SorrelKit::IconRequest;
using SorrelKit::Package;
using SorrelKit::Resources;

namespace {

constexpr int Side = 64;
constexpr int Gap = 4;
constexpr int NameHeight = 16;
constexpr int HeaderHeight = 48;
constexpr int Groups = 3;
constexpr int Square = 8;

struct Column {
    const char *title;
    const char *style; ///< null for no theme
    const char *overlay;
    bool isNight;
    QRgb background;
};

constexpr Column Columns[] = {
    {"no theme", nullptr, nullptr, false, 0},
    {"Material Light", "style/Theme.Material.Light", nullptr, false, 0xfffafafa},
    {"Material", "style/Theme.Material", nullptr, false, 0xff303030},
    {"Light, Dark over it", "style/Theme.Material.Light", "style/ThemeOverlay.Material.Dark", false, 0xff303030},
    {"DayNight by day", "style/Theme.DeviceDefault.DayNight", nullptr, false, 0xfffafafa},
    {"DayNight by night", "style/Theme.DeviceDefault.DayNight", nullptr, true, 0xff303030},
};

constexpr const char *Drawables[] = {
    "ic_menu_search_material",
    "ic_menu_share_material",
    "ic_ab_back_material",
    "ic_phone",
    "ic_lock_lock",
    "ic_lock_airplane_mode",
    "ic_fingerprint",
    "ic_settings_bluetooth",
    "ic_corp_user_badge",
    "emergency_icon",
    "perm_group_camera",
    "perm_group_location",
    "perm_group_microphone",
    "bottomsheet_background",
    "btn_default_material",
    "btn_colored_material",
    "btn_toggle_material",
    "btn_check_material_anim",
    "btn_radio_material_anim",
    "cab_background_top_material",
    "chooser_action_button_bg",
    "ic_menu_copy_material",
    "edit_text_material",
    "fastscroll_thumb_material",
    "ic_info",
    "popup_background_material",
    "progress_horizontal_material",
    "ratingbar_material",
    "seekbar_track_material",
    "ic_battery",
    "text_select_handle_middle_material",
    "textfield_search_material",
    "tooltip_frame",
};

constexpr int GroupWidth = int(std::size(Columns)) * (Side + Gap) + 3 * Gap;
constexpr int RowHeight = Side + NameHeight + 2 * Gap;

void paintBackground(QPainter *painter, QPoint at, QRgb background)
{
    for (int y = 0; y < Side; y += Square) {
        for (int x = 0; x < Side; x += Square) {
            const QRgb checkers = (x + y) / Square % 2 == 0 ? 0xffc8c8c8 : 0xfff0f0f0;
            painter->fillRect(QRect(at + QPoint(x, y), QSize(Square, Square)), background != 0 ? background : checkers);
        }
    }
}

IconRequest requestOf(const Column &column, const Resources &resources)
{
    IconRequest request(Side - 2 * Gap);
    request.setNight(column.isNight);
    if (column.style != nullptr)
        request.setThemeStyle(resources.find(QLatin1String(column.style)));
    if (column.overlay != nullptr)
        request.setThemeOverlays({resources.find(QLatin1String(column.overlay))});
    return request;
}

// Returns whether the drawable is whole in every theme.
bool paintDrawable(QPainter *painter, QPoint at, quint32 id, const Resources &resources, DrawableRenderer *renderer)
{
    bool isWhole = true;
    for (const Column &column : Columns) {
        paintBackground(painter, at, column.background);
        painter->drawImage(at + QPoint(Gap, Gap), renderer->drawable(id, requestOf(column, resources)));
        if (column.style != nullptr && renderer->error()) {
            std::fprintf(stderr, "%s, %s: %s\n", qPrintable(resources.name(id)), column.title,
                         qPrintable(renderer->error().text()));
            isWhole = false;
        }
        at += QPoint(Side + Gap, 0);
    }
    return isWhole;
}

void paintHeader(QPainter *painter, QPoint at)
{
    for (const Column &column : Columns) {
        painter->drawText(QRect(at, QSize(Side, HeaderHeight - Gap)), Qt::AlignBottom | Qt::TextWordWrap,
                          QLatin1String(column.title));
        at += QPoint(Side + Gap, 0);
    }
}

QImage sheetOf(const Package &package)
{
    const Resources resources(package);
    DrawableRenderer renderer(package);
    const int rows = (int(std::size(Drawables)) + Groups - 1) / Groups;
    QImage sheet(Groups * GroupWidth + Gap, HeaderHeight + rows * RowHeight, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    for (int group = 0; group < Groups; ++group)
        paintHeader(&painter, QPoint(group * GroupWidth + 2 * Gap, 0));
    for (int i = 0; i < int(std::size(Drawables)); ++i) {
        const QPoint at(i % Groups * GroupWidth + 2 * Gap, HeaderHeight + i / Groups * RowHeight);
        const QString name = QLatin1String(Drawables[i]);
        const quint32 id = resources.find(QStringLiteral("drawable/") + name);
        const bool isWhole = paintDrawable(&painter, at, id, resources, &renderer);
        painter.setPen(isWhole ? Qt::black : Qt::red);
        painter.drawText(QRect(at + QPoint(0, Side), QSize(GroupWidth, NameHeight)), Qt::AlignLeft | Qt::AlignVCenter,
                         name);
        painter.setPen(Qt::black);
    }
    return sheet;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: themed_sheet FILE FRAMEWORK\n", stderr);
        return 2;
    }
    const Package package(arguments.at(2));
    if (package.isValid() && sheetOf(package).save(arguments.at(1)))
        return 0;
    std::fprintf(stderr, "themed_sheet: cannot draw %s into %s\n", qPrintable(arguments.at(2)),
                 qPrintable(arguments.at(1)));
    return 1;
}
