// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDATTRIBUTES_H
#define ANDROIDATTRIBUTES_H

#include <QtGlobal>

#include <algorithm>
#include <iterator>

/// Resource ids of Android's public attributes. Documents identify attributes by them; the names may be missing.
namespace Attr {

// Manifests.
constexpr quint32 Theme = 0x01010000;
constexpr quint32 Label = 0x01010001;
constexpr quint32 Icon = 0x01010002;
constexpr quint32 Name = 0x01010003;
constexpr quint32 VersionCode = 0x0101021b;
constexpr quint32 VersionName = 0x0101021c;
constexpr quint32 VersionCodeMajor = 0x01010576;
constexpr quint32 MinSdkVersion = 0x0101020c;
constexpr quint32 TargetSdkVersion = 0x01010270;
constexpr quint32 MaxSdkVersion = 0x01010271;
constexpr quint32 TargetSandboxVersion = 0x0101054c;
constexpr quint32 Enabled = 0x0101000e;
constexpr quint32 Exported = 0x01010010;
constexpr quint32 TargetActivity = 0x01010202;
constexpr quint32 Required = 0x0101028e;
constexpr quint32 GlEsVersion = 0x01010281;
constexpr quint32 Version = 0x01010519;
constexpr quint32 RoundIcon = 0x0101052c;
constexpr quint32 Banner = 0x010103f2;
constexpr quint32 IsFeatureSplit = 0x0101055b;
constexpr quint32 IsSplitRequired = 0x01010591;
constexpr quint32 RequiredSplitTypes = 0x0101064e;
constexpr quint32 SplitTypes = 0x0101064f;
constexpr quint32 HasCode = 0x0101000c;
constexpr quint32 ProtectionLevel = 0x01010009;
constexpr quint32 PermissionGroup = 0x0101000a;
constexpr quint32 Description = 0x01010020;
constexpr quint32 Permission = 0x01010006;
constexpr quint32 ReadPermission = 0x01010007;
constexpr quint32 WritePermission = 0x01010008;
constexpr quint32 Debuggable = 0x0101000f;
constexpr quint32 ExtractNativeLibs = 0x010104ea;
constexpr quint32 LaunchMode = 0x0101001d;
constexpr quint32 ScreenOrientation = 0x0101001e;
constexpr quint32 ConfigChanges = 0x0101001f;
constexpr quint32 Resource = 0x01010025;
constexpr quint32 Scheme = 0x01010027;
constexpr quint32 Host = 0x01010028;
constexpr quint32 ReqTouchScreen = 0x01010227;
constexpr quint32 ReqKeyboardType = 0x01010228;
constexpr quint32 ReqHardKeyboard = 0x01010229;
constexpr quint32 ReqNavigation = 0x0101022a;
constexpr quint32 WindowSoftInputMode = 0x0101022b;
constexpr quint32 ReqFiveWayNav = 0x01010232;
constexpr quint32 TestOnly = 0x01010272;
constexpr quint32 InstallLocation = 0x010102b7;
constexpr quint32 HardwareAccelerated = 0x010102d3;
constexpr quint32 LargeHeap = 0x0101035a;
constexpr quint32 PublicKey = 0x010103a6;
constexpr quint32 Logo = 0x010102be;
constexpr quint32 Value = 0x01010024;
constexpr quint32 MimeType = 0x01010026;
constexpr quint32 Action = 0x0101002d;
constexpr quint32 TargetClass = 0x0101002f;
constexpr quint32 SettingsActivity = 0x01010225;
constexpr quint32 ShortcutId = 0x01010528;
constexpr quint32 ShortcutShortLabel = 0x01010529;
constexpr quint32 ShortcutLongLabel = 0x0101052a;

// Drawables.
constexpr quint32 Drawable = 0x01010199;
constexpr quint32 Src = 0x01010119;
constexpr quint32 Color = 0x010101a5;
constexpr quint32 Alpha = 0x0101031f;
constexpr quint32 Tint = 0x01010121;
constexpr quint32 TintMode = 0x010103fb;
constexpr quint32 AutoMirrored = 0x010103ea;
constexpr quint32 Width = 0x01010159;
constexpr quint32 Height = 0x01010155;
constexpr quint32 Gravity = 0x010100af;
constexpr quint32 Dither = 0x0101011c;
constexpr quint32 MipMap = 0x010103cd;
constexpr quint32 Antialias = 0x0101011a;
constexpr quint32 Filter = 0x0101011b;
constexpr quint32 TileMode = 0x01010201;
constexpr quint32 TileModeX = 0x01010477;
constexpr quint32 TileModeY = 0x01010478;

// State lists, level lists and animation lists. An item with a state set to false applies while the state is off.
constexpr quint32 StateFocused = 0x0101009c;
constexpr quint32 StateWindowFocused = 0x0101009d;
constexpr quint32 StateEnabled = 0x0101009e;
constexpr quint32 StateCheckable = 0x0101009f;
constexpr quint32 StateChecked = 0x010100a0;
constexpr quint32 StateSelected = 0x010100a1;
constexpr quint32 StateActive = 0x010100a2;
constexpr quint32 StateSingle = 0x010100a3;
constexpr quint32 StateFirst = 0x010100a4;
constexpr quint32 StateMiddle = 0x010100a5;
constexpr quint32 StateLast = 0x010100a6;
constexpr quint32 StatePressed = 0x010100a7;
constexpr quint32 StateActivated = 0x010102fe;
constexpr quint32 StateHovered = 0x01010367;
constexpr quint32 StateAccelerated = 0x0101031b;
constexpr quint32 StateDragCanAccept = 0x01010368;
constexpr quint32 StateDragHovered = 0x01010369;
constexpr quint32 Duration = 0x01010198;
constexpr quint32 OneShot = 0x01010197;
constexpr quint32 MinLevel = 0x010101b1;
constexpr quint32 MaxLevel = 0x010101b2;
constexpr quint32 Level = 0x01010500;

// Vectors.
constexpr quint32 ViewportWidth = 0x01010402;
constexpr quint32 ViewportHeight = 0x01010403;
constexpr quint32 PathData = 0x01010405;
constexpr quint32 FillColor = 0x01010404;
constexpr quint32 FillAlpha = 0x010104cc;
constexpr quint32 FillType = 0x0101051e;
constexpr quint32 StrokeColor = 0x01010406;
constexpr quint32 StrokeWidth = 0x01010407;
constexpr quint32 StrokeAlpha = 0x010104cb;
constexpr quint32 StrokeLineCap = 0x0101040b;
constexpr quint32 StrokeLineJoin = 0x0101040c;
constexpr quint32 StrokeMiterLimit = 0x0101040d;
constexpr quint32 TrimPathStart = 0x01010408;
constexpr quint32 TrimPathEnd = 0x01010409;
constexpr quint32 TrimPathOffset = 0x0101040a;
constexpr quint32 Rotation = 0x01010326;
constexpr quint32 PivotX = 0x010101b5;
constexpr quint32 PivotY = 0x010101b6;
constexpr quint32 ScaleX = 0x01010324;
constexpr quint32 ScaleY = 0x01010325;
constexpr quint32 TranslateX = 0x0101045a;
constexpr quint32 TranslateY = 0x0101045b;

// Animators and interpolators.
constexpr quint32 Animation = 0x010101cd;
constexpr quint32 PropertyName = 0x010102e1;
constexpr quint32 PropertyXName = 0x01010474;
constexpr quint32 PropertyYName = 0x01010475;
constexpr quint32 ValueFrom = 0x010102de;
constexpr quint32 ValueTo = 0x010102df;
constexpr quint32 Ordering = 0x010102e2;
constexpr quint32 StartOffset = 0x010101be;
constexpr quint32 RepeatCount = 0x010101bf;
constexpr quint32 RepeatMode = 0x010101c0;
constexpr quint32 Fraction = 0x010104d8;
constexpr quint32 Interpolator = 0x01010141;
constexpr quint32 Factor = 0x010101d3;
constexpr quint32 Cycles = 0x010101d4;
constexpr quint32 Tension = 0x0101026a;
constexpr quint32 ExtraTension = 0x0101026b;
constexpr quint32 ControlX1 = 0x010103fc;
constexpr quint32 ControlY1 = 0x010103fd;
constexpr quint32 ControlX2 = 0x010103fe;
constexpr quint32 ControlY2 = 0x010103ff;

// Gradients.
constexpr quint32 Type = 0x010101a1;
constexpr quint32 StartColor = 0x0101019d;
constexpr quint32 CenterColor = 0x0101020b;
constexpr quint32 EndColor = 0x0101019e;
constexpr quint32 StartX = 0x01010510;
constexpr quint32 StartY = 0x01010511;
constexpr quint32 EndX = 0x01010512;
constexpr quint32 EndY = 0x01010513;
constexpr quint32 CenterX = 0x010101a2;
constexpr quint32 CenterY = 0x010101a3;
constexpr quint32 GradientRadius = 0x010101a4;
constexpr quint32 Offset = 0x01010514;
constexpr quint32 Angle = 0x010101a0;
constexpr quint32 UseLevel = 0x0101019f;

// Shapes.
constexpr quint32 Shape = 0x0101019a;
constexpr quint32 InnerRadius = 0x0101025f;
constexpr quint32 InnerRadiusRatio = 0x0101019b;
constexpr quint32 Thickness = 0x01010260;
constexpr quint32 ThicknessRatio = 0x0101019c;
constexpr quint32 Radius = 0x010101a8;
constexpr quint32 TopLeftRadius = 0x010101a9;
constexpr quint32 TopRightRadius = 0x010101aa;
constexpr quint32 BottomLeftRadius = 0x010101ab;
constexpr quint32 BottomRightRadius = 0x010101ac;
constexpr quint32 DashWidth = 0x010101a6;
constexpr quint32 DashGap = 0x010101a7;
constexpr quint32 Left = 0x010101ad;
constexpr quint32 Top = 0x010101ae;
constexpr quint32 Right = 0x010101af;
constexpr quint32 Bottom = 0x010101b0;
constexpr quint32 Visible = 0x01010194;

// Layers, insets, rotation, scaling and clipping.
constexpr quint32 Start = 0x010104db;
constexpr quint32 End = 0x010104dc;
constexpr quint32 Inset = 0x010104b5;
constexpr quint32 InsetLeft = 0x010101b7;
constexpr quint32 InsetTop = 0x010101b9;
constexpr quint32 InsetRight = 0x010101b8;
constexpr quint32 InsetBottom = 0x010101ba;
constexpr quint32 Opacity = 0x0101031e;
constexpr quint32 PaddingMode = 0x01010457;
constexpr quint32 FromDegrees = 0x010101b3;
constexpr quint32 ToDegrees = 0x010101b4;
constexpr quint32 ScaleWidth = 0x010101fc;
constexpr quint32 ScaleHeight = 0x010101fd;
constexpr quint32 ScaleGravity = 0x010101fe;
constexpr quint32 ClipOrientation = 0x0101020a;
constexpr quint32 DrawableLeft = 0x0101016f;
constexpr quint32 Id = 0x010100d0;
constexpr quint32 UseIntrinsicSizeAsMinimum = 0x01010310;
} // namespace Attr

/// An attribute whose name is known by its resource id. Documents may give it another name, or none.
struct AndroidAttribute {
    quint32 id;
    const char *name;
};

/// In the order of their ids. libsorrel's documents name these attributes by their ids, so the list stays as it is.
constexpr AndroidAttribute AndroidAttributes[] = {
    {Attr::Theme, "theme"},
    {Attr::Label, "label"},
    {Attr::Icon, "icon"},
    {Attr::Name, "name"},
    {Attr::Permission, "permission"},
    {Attr::Debuggable, "debuggable"},
    {Attr::LaunchMode, "launchMode"},
    {Attr::ScreenOrientation, "screenOrientation"},
    {Attr::ConfigChanges, "configChanges"},
    {Attr::Resource, "resource"},
    {Attr::Scheme, "scheme"},
    {Attr::Host, "host"},
    {Attr::MinSdkVersion, "minSdkVersion"},
    {Attr::VersionCode, "versionCode"},
    {Attr::VersionName, "versionName"},
    {Attr::ReqTouchScreen, "reqTouchScreen"},
    {Attr::ReqKeyboardType, "reqKeyboardType"},
    {Attr::ReqHardKeyboard, "reqHardKeyboard"},
    {Attr::ReqNavigation, "reqNavigation"},
    {Attr::WindowSoftInputMode, "windowSoftInputMode"},
    {Attr::ReqFiveWayNav, "reqFiveWayNav"},
    {Attr::TargetSdkVersion, "targetSdkVersion"},
    {Attr::MaxSdkVersion, "maxSdkVersion"},
    {Attr::TestOnly, "testOnly"},
    {Attr::GlEsVersion, "glEsVersion"},
    {Attr::Required, "required"},
    {Attr::InstallLocation, "installLocation"},
    {Attr::HardwareAccelerated, "hardwareAccelerated"},
    {Attr::LargeHeap, "largeHeap"},
    {Attr::PublicKey, "publicKey"},
};

/// The index of the attribute @p id in AndroidAttributes, or -1.
inline int indexOfAndroidAttribute(quint32 id)
{
    const auto *found =
        std::lower_bound(std::begin(AndroidAttributes), std::end(AndroidAttributes), id,
                         [](const AndroidAttribute &attribute, quint32 wanted) { return attribute.id < wanted; });
    return found != std::end(AndroidAttributes) && found->id == id ? int(found - std::begin(AndroidAttributes)) : -1;
}

#endif
