// Tests of registering font files.
#include "platform/font_files/registered_fonts.h"

#include "core/path_text.h"

#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>

#include <gtest/gtest.h>

// The toolkit numbers the fonts that it is given, so a number that is skipped is a font that it keeps.
TEST(RegisteredFontsTest, AFileIsRegisteredOnce) {
    int argumentCount = 0;
    const QGuiApplication application(argumentCount, nullptr);
    QFile file(TextOfPath(TESTS_FOLDER "/fonts/vantorix_test.ttf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const int before = QFontDatabase::addApplicationFontFromData(bytes);
    RegisteredFonts fonts;
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(fonts.Register(bytes), 1);
    }
    EXPECT_EQ(QFontDatabase::addApplicationFontFromData(bytes), before + 2);
    EXPECT_EQ(fonts.Register("no font"), 0);
}
