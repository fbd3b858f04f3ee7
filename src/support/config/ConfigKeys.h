#pragma once

#include <QString>

/// Every configuration key of the program with its type and default. No other file spells a key.
namespace ConfigKeys {

/// A key whose value has type T; `fallback` is used (and, for first-use keys, written) when it is absent.
template <typename T>
struct Setting
{
    const char* key;
    T fallback;
};

/// A number and the bounds outside which a stored one does not count; see storedNumber().
template <typename T>
struct Number : Setting<T>
{
    T least;
    T most;
};

// Application store. The product's own values are in data/defaults.json.
inline constexpr Setting<const char*> kLanguage{"language", ""};
inline constexpr Number<int> kDevUpdateIntervalMs{{"devUpdateInterval", 80}, 1, 8000};
inline constexpr Number<int> kPixmapStreamReadIntervalMs{{"pixmapStreamReadInterval", 80}, 80, 8000};
inline constexpr Number<double> kGama{{"runtime.gama", 1.0}, 0.01, 5.0}; // beyond, all is black
inline constexpr Setting<bool> kSingleControlMode{"runtime.singleControlMode", true};
inline constexpr Setting<bool> kEnableMultiDeviceControlView{"runtime.enableMultiDeviceControlView", false};
inline constexpr Setting<const char*> kCloseButtonAction{"runtime.closeButtonAction", ""};
inline constexpr char kCloseQuits[] = "Quit the application"; ///< any other text minimises
inline constexpr char kCloseMinimizes[] = "Minimize to the system tray";
inline constexpr Setting<int> kPhyBtnAction{"runtime.phyBtnAction", 0};
inline constexpr Setting<bool> kPhyBtnSingleCtrlMode{"runtime.phyBtnSingleCtrlMode", false};
inline constexpr Setting<bool> kScreenSyncAdvancedMode{"runtime.isEnableScreenSyncAdvanedMode", false};
inline constexpr Setting<bool> kScreenEditEnable{"runtime.screenEditEnable", false};
inline constexpr Setting<bool> kScreenshotEnable{"runtime.screenshotEnable", false};
inline constexpr Setting<bool> kLoopLogEnable{"runtime.loopLogEnable", false};
inline constexpr Setting<bool> kScreenSyncAutoWipeDarkSide{"screenSyncAutoWipeDarkSide", false};
inline constexpr Setting<bool> kExtraEffects{"effects.extra", false};
/// How the screen effects look and how often they look; a device's own choice is in the effect store, under
/// the part of the key behind the dot.
inline constexpr Setting<const char*> kSmoothing{"screenSync.smoothing", "off"}; // off, responsive, calm
inline constexpr Number<int> kSaturationGate{{"screenSync.saturationGate", 0}, 0, 64}; // levels; 0: none
inline constexpr Setting<const char*> kBorderMode{"screenSync.borderMode", "classic"}; // classic, stable
inline constexpr char kFrameIntervalMs[] = "screenSync.frameIntervalMs"; ///< absent: devUpdateInterval
inline constexpr int kFrameIntervalOfLine = -1;                          ///< as fast as the line takes frames
inline constexpr Number<int> kFixedFrameIntervalMs{{kFrameIntervalMs, 80}, 20, 200};
/// What a device that was never seen before gets; stored with the device.
inline constexpr Setting<const char*> kNewColorPipeline{"device.colorPipeline", "classic"};
inline constexpr Number<double> kMusicQuietLevel{{"effects.musicQuietLevel", 0.0}, 0.0, 79.0};

inline constexpr Setting<const char*> kCaptureMode{"runtime.captureMode", ""}; // none: the session's own
inline constexpr Setting<const char*> kScreenCastToken{"runtime.screenCastToken", ""}; // the user's consent
inline constexpr char kHotkeysGranted[] = "runtime.hotkeysGranted"; ///< a bool; absent: not asked yet
inline constexpr Setting<bool> kLightsOffWhileLocked{"lightsOffWhileLocked", true};

inline constexpr Setting<const char*> kUserContact{"feedback.userContactInfo", ""};
inline constexpr Setting<bool> kReportUsage{"online.reportUsage", false}; // the user's consent

// Application store, one key a device; the functions append the controller id.
inline constexpr Setting<bool> kAutoWipeDarkSideOf{"runtime.screenSync.autoWipeDarkSide.", false};
inline constexpr Setting<const char*> kSourceIndexOf{"runtime.screenSync.sourceIndex.", ""};
inline QString autoWipeDarkSideKey(const QString& controllerId)
{
    return QLatin1String(kAutoWipeDarkSideOf.key) + controllerId;
}
inline QString sourceIndexKey(const QString& controllerId)
{
    return QLatin1String(kSourceIndexOf.key) + controllerId;
}
inline QString isMarqueeEffectKey(const QString& controllerId)
{
    return QStringLiteral("runtime.phyBtnStatus.%1.isMarqueeEffect").arg(controllerId);
}
inline QString disconnectionScheduleKey(const QString& controllerId)
{
    return QStringLiteral("devicesHistory.%1.disconnectionSchedule").arg(controllerId);
}
inline QString hotkeyBindingKey(const QString& actionId)
{
    return QStringLiteral("hotkeyBinding.%1").arg(actionId);
}

// Global store.
inline constexpr Setting<bool> kCleanStartup{"cleanStartup", false};
inline constexpr Setting<const char*> kLatestVersion{"latestVerion.version", ""};
inline QString lastBindingKey(const QString& controllerId, const QString& groupId)
{
    return QStringLiteral("lastBinding.%1.%2").arg(controllerId, groupId);
}

// Controller store: members of a device's object. The defaults are those for a key that is missing on load.
inline constexpr Setting<const char*> kKindName{"kindName", ""}; // absent: the model
inline constexpr Number<double> kBrightness{{"brightness", 0.8}, 0.0, 1.0};
inline constexpr Setting<bool> kEnable{"enable", true};
inline constexpr Setting<int> kInstallDirection{"installDirection", 0};
inline constexpr Setting<const char*> kSubMode{"subMode", ""};
inline constexpr Setting<const char*> kWorkMode{"workMode", ""};
inline constexpr Number<int> kNbLeds{{"nbLeds", 0}, 0, 10000}; // a frame of more takes seconds
inline constexpr Setting<int> kLedPerUnit{"ledPerUnit", 1};
inline constexpr Setting<bool> kAdjustableLength{"adjustableLength", false};
inline constexpr Setting<const char*> kColorPipeline{"colorPipeline", "classic"}; // classic, linear
inline constexpr Number<double> kWhiteRed{{"whiteRed", 1.0}, 0.0, 1.0};
inline constexpr Number<double> kWhiteGreen{{"whiteGreen", 1.0}, 0.0, 1.0};
inline constexpr Number<double> kWhiteBlue{{"whiteBlue", 1.0}, 0.0, 1.0};
inline constexpr Number<int> kMinLight{{"minLight", 0}, 0, 20};                   // levels
inline constexpr Number<int> kPowerLimitMa{{"powerLimitMa", 0}, 0, 1000000};      // 0: none
inline constexpr Number<int> kLedMilliAmps{{"ledMilliAmps", 55}, 10, 100};        // of one LED at full white
inline constexpr Setting<const char*> kUnavailableModes{"unavailable_modes", ""}; // an array, absent: empty

// Effect store: keys below effect id and controller id.
inline constexpr char kAllControllers[] = "__all__"; ///< pseudo controller id for data of all devices
inline constexpr char kColorStrapsEffect[] =
    "id.effect.colorful.colorStraps";                                  ///< pseudo effect: the shared list
inline constexpr char kColorStrapList[] = "colorStrapList";            // an array
inline constexpr Setting<unsigned> kSingleColor{"color", 0xFF4F24D3u}; // 0xAARRGGBB
inline constexpr Setting<double> kFlowingSpeed{"speed", 0.0};          // phase a step, 0.0 to 0.05
inline constexpr Setting<int> kMarqueeSpeed{"speed", 45};
inline constexpr Setting<int> kColorMapSpeed{"speed", 1};
inline constexpr Setting<int> kCurrentStrap{"currentStrap", 0}; // index in the list of colour straps
inline constexpr char kStrapConfigs[] = "strapConfigs";         ///< object with the two that follow
inline constexpr Setting<double> kStrapSpeed{"speed", 0.5};
inline constexpr Setting<double> kStrapRange{"range", 1.0};
inline constexpr Setting<double> kBlurStrength{"blurStrength", 0.5};
inline constexpr Setting<double> kSaturationStrength{"saturationStrength", 1.0};
inline constexpr char kLedMap[] = "map"; ///< object with screenWidth, screenHeight, ledMap
inline constexpr Setting<const char*> kAudioSource{"audioSource", ""};
inline constexpr Setting<double> kMusicStrength{"strength", 2.0};
inline constexpr Setting<double> kMusicMode2Strength{"strength", 1.0};
inline constexpr Setting<double> kMusicMode4Strength{"strength", 3.0};
inline constexpr char kFragments[] = "fragments"; ///< object of objects with the members that follow
inline constexpr Setting<int> kBeginIndex{"beginIndex", 0};
inline constexpr Setting<int> kEndIndex{"endIndex", 0};
inline constexpr Setting<double> kDbEnhance{"dbEnhance", 0.0};
inline constexpr Setting<double> kMulEnhance{"mulEnhance", 1.0};
inline constexpr Setting<double> kMinFrequency{"minFrequency", 0.0}; // hertz
inline constexpr Setting<double> kMaxFrequency{"maxFrequency", 0.0};
inline constexpr Setting<int> kSoundChannel{"soundChannel", 0};
inline constexpr Setting<int> kFragmentDir{"dir", 0};

} // namespace ConfigKeys
