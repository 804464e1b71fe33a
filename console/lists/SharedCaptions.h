#pragma once

namespace nordkeep {

// Captions that more than one file of the console uses.
inline constexpr int kTextEndSelected = 1053;
inline constexpr int kTextCancel = 1400;
inline constexpr int kCaptionFirstTab = 3000;
inline constexpr int kCaptionBack = 3257;
inline constexpr int kCaptionSave = 3258;
inline constexpr int kCaptionComments = 3260;
inline constexpr int kCaptionTypeInformation = 3261;
inline constexpr int kCaptionObjectInformation = 3262;
inline constexpr int kCaptionNewComment = 3264;
inline constexpr int kCaptionChangedByOthers = 3267;
inline constexpr int kCaptionPort = 3327;
inline constexpr int kCaptionClose = 3352;
inline constexpr int kCaptionFirstStatus = 3400;
inline constexpr int kCaptionTestFailed = 3420;
inline constexpr int kCaptionTest2Failed = 3421;
inline constexpr int kCaptionUnacked = 3557;
inline constexpr int kCaptionFilter = 3561;
inline constexpr int kCaptionNoContact = 3704;
inline constexpr int kCaptionPrint = 3711;
inline constexpr int kCaptionSaved = 3745;
inline constexpr int kCaptionUnreadable = 3786;
inline constexpr int kCaptionShiftTitle = 3750;
inline constexpr int kCaptionNoLines = 3754;
inline constexpr int kCaptionLines = 4540;

}  // namespace nordkeep
