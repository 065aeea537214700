// The alert as the platform receives it: this program answers the platform's call itself.
#include "soundlib/NotWavAlert.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>

#include "platform/linux/CFString.h"

namespace {

struct Alert {
    CFTimeInterval timeout;
    CFOptionFlags flags;
    CFURLRef urls[3];
    std::string header;
    CFStringRef message;
    std::string defaultButton;
    CFStringRef otherButtons[2];
    CFOptionFlags responseBefore;
};

// Lives on when the program ends and so keeps the messages reachable: none is ever released.
std::vector<Alert>& alerts = *new std::vector<Alert>;

} // namespace

SInt32 CFUserNotificationDisplayAlert(CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL,
                                      CFURLRef soundURL, CFURLRef localizationURL,
                                      CFStringRef alertHeader, CFStringRef alertMessage,
                                      CFStringRef defaultButtonTitle,
                                      CFStringRef alternateButtonTitle,
                                      CFStringRef otherButtonTitle, CFOptionFlags* responseFlags) {
    alerts.push_back({timeout,
                      flags,
                      {iconURL, soundURL, localizationURL},
                      alertHeader->utf8,
                      alertMessage,
                      defaultButtonTitle->utf8,
                      {alternateButtonTitle, otherButtonTitle},
                      *responseFlags});
    *responseFlags = kCFUserNotificationOtherResponse;
    return -1;
}

TEST(NotWavAlert, ShowsHeaderMessageAndOneButtonFor20Seconds) {
    showNotWavAlert("drums.aif");
    ASSERT_FALSE(alerts.empty());
    const Alert& alert = alerts.back();
    EXPECT_EQ(alert.timeout, 20.0);
    EXPECT_EQ(alert.flags, 3u);
    EXPECT_EQ(alert.urls[0], nullptr);
    EXPECT_EQ(alert.urls[1], nullptr);
    EXPECT_EQ(alert.urls[2], nullptr);
    EXPECT_EQ(alert.header, "File is not a 16-bit Wav file");
    EXPECT_EQ(alert.message->utf8, "drums.aif");
    EXPECT_EQ(alert.defaultButton, "OK");
    EXPECT_EQ(alert.otherButtons[0], nullptr);
    EXPECT_EQ(alert.otherButtons[1], nullptr);
    EXPECT_EQ(alert.responseBefore, 0u);
}

TEST(NotWavAlert, TextIsTakenAsMacRoman) {
    showNotWavAlert("Gr\x9f\xa7"
                    "e");
    EXPECT_EQ(alerts.back().message->utf8, "Grüße");
}

TEST(NotWavAlert, EachAlertKeepsAMessageOfItsOwn) {
    const std::size_t before = alerts.size();
    showNotWavAlert("first");
    showNotWavAlert("second");
    showNotWavAlert("");
    ASSERT_EQ(alerts.size(), before + 3);
    EXPECT_EQ(alerts[before].message->utf8, "first");
    EXPECT_EQ(alerts[before + 1].message->utf8, "second");
    EXPECT_EQ(alerts[before + 2].message->utf8, "");
}
