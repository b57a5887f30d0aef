#pragma once

/// The numbers that an instance returns for its states and versions.
namespace ZELLib3 {

/// StateInfo::Status. Any other code is a state without figures.
namespace Status {
inline constexpr int Offline = 2;
inline constexpr int Admin = 3;
inline constexpr int AdminToOnline = 4;
inline constexpr int Online = 5;
}  // namespace Status

/// Analyzer::State. Any other code is an unknown state.
namespace AnalyzerState {
inline constexpr int None = 0;
inline constexpr int Started = 1;
inline constexpr int Stopped = 2;
}  // namespace AnalyzerState

/// A setting that may be unknown, such as LogSettings::WriteOff.
namespace Switch {
inline constexpr int Unknown = 0;
inline constexpr int Off = 1;
inline constexpr int On = 2;
}  // namespace Switch

/// Database::InstanceType.
namespace InstanceType {
inline constexpr int ObjectStore = 1;
}

/// Database::PlatformType.
namespace PlatformType {
inline constexpr int AddressWindowing = 1;
}

/// Kernel versions from which an instance offers more, packed as in Version:
/// major * 16777216 + minor * 65536 + finer bytes.
namespace Kernel {
inline constexpr int V72 = 0x07020000;
inline constexpr int V73 = 0x07030000;
inline constexpr int V74 = 0x07040000;
inline constexpr int V7402 = 0x07040200;
inline constexpr int V7403 = 0x07040300;
inline constexpr int V75 = 0x07050000;
inline constexpr int V76 = 0x07060000;
/// Can extend its data area and update its statistics automatically.
inline constexpr int V76Automatic = 0x0706000A;
/// Can change parameters while it is online.
inline constexpr int V76OnlineParameters = 0x0706000C;
}  // namespace Kernel

}  // namespace ZELLib3
