// Tests of the dialogs' layout on screens of different sizes, and of their colours.
#include "platform/qt/config_window.h"
#include "platform/qt/folder_window.h"
#include "platform/qt/key_window.h"

#include "dialog_model.h"
#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/qt_event_pump.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int kLeastTarget = 40;

QString NameOf(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr ? widget.objectName() + u'"' + label->text().left(40) + u'"'
                            : widget.objectName();
}

bool Scrolls(const QWidget& widget, const QWidget& parent) {
    for (const QWidget* above = widget.parentWidget(); above != &parent; above = above->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(above) != nullptr) {
            return true;
        }
    }
    return false;
}

bool IsLeaf(const QWidget& widget) {
    return qobject_cast<const QLabel*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QScrollArea*>(&widget) != nullptr ||
           dynamic_cast<const PictureView*>(&widget) != nullptr;
}

// The visible labels and controls in a widget. A scroll area counts as one; what is in it may be larger.
std::vector<QWidget*> Leaves(const QWidget& parent) {
    std::vector<QWidget*> leaves;
    for (QWidget* widget : parent.findChildren<QWidget*>()) {
        if (IsLeaf(*widget) && widget->isVisible() && !Scrolls(*widget, parent)) {
            leaves.push_back(widget);
        }
    }
    return leaves;
}

QRect PlaceIn(const QWidget& window, const QWidget& widget) {
    return {widget.mapTo(&window, QPoint(0, 0)), widget.size()};
}

void ExpectNoOverlap(const QWidget& page) {
    const std::vector<QWidget*> leaves = Leaves(page);
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        for (std::size_t k = i + 1; k < leaves.size(); ++k) {
            EXPECT_FALSE(PlaceIn(page, *leaves[i]).intersects(PlaceIn(page, *leaves[k])))
                << NameOf(*leaves[i]).toStdString() << " and " << NameOf(*leaves[k]).toStdString();
        }
    }
}

// Measured by another way than the label's own.
void ExpectTextFits(const QLabel& label) {
    const QRect room(0, 0, label.contentsRect().width(), 100'000);
    const QRect text =
        label.fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::TextWrapAnywhere, label.text());
    EXPECT_LE(text.height(), label.contentsRect().height()) << NameOf(label).toStdString();
    EXPECT_LE(text.width(), label.contentsRect().width() + 1) << NameOf(label).toStdString();
}

void ExpectNothingCut(const QWidget& page) {
    for (const QWidget* widget : Leaves(page)) {
        EXPECT_TRUE(page.rect().contains(PlaceIn(page, *widget))) << NameOf(*widget).toStdString();
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            ExpectTextFits(*label);
        } else if (widget->hasHeightForWidth()) {
            EXPECT_GE(widget->height(), widget->heightForWidth(widget->width()))
                << NameOf(*widget).toStdString();
        } else if (const auto* area = qobject_cast<const QScrollArea*>(widget)) {
            const QWidget* scrolled = area->widget();
            EXPECT_LE(scrolled->width(), area->viewport()->width());
            EXPECT_GE(scrolled->height(), scrolled->heightForWidth(scrolled->width()));
        } else if (qobject_cast<const QLineEdit*>(widget) == nullptr) {
            EXPECT_GE(widget->width(), widget->sizeHint().width()) << NameOf(*widget).toStdString();
            EXPECT_GE(widget->height(), widget->sizeHint().height()) << NameOf(*widget).toStdString();
        }
    }
}

void ExpectFingerTargets(const QWidget& page) {
    for (const QWidget* widget : Leaves(page)) {
        if (widget->focusPolicy() != Qt::NoFocus || qobject_cast<const QPushButton*>(widget) != nullptr) {
            EXPECT_GE(widget->height(), kLeastTarget) << NameOf(*widget).toStdString();
            EXPECT_GE(widget->width(), kLeastTarget) << NameOf(*widget).toStdString();
        }
    }
}

class DialogLayoutTest : public testing::TestWithParam<QSize> {
protected:
    DialogLayoutTest() : screen(QPoint(100, 50), GetParam()) {}

    template <typename Window>
    std::unique_ptr<Window> Shown(const DialogModel& model) {
        auto window = std::make_unique<Window>(
            pump, [&model](const ControlName& name) { return model.Look(name); }, screen);
        window->Refresh();
        window->show();
        Settle();
        return window;
    }
    // Layouts take several rounds when scroll bars appear.
    static void Settle() {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
        }
    }
    void ExpectCentered(const QWidget& window) const {
        EXPECT_TRUE(screen.contains(window.geometry()));
        EXPECT_LE((window.geometry().center() - screen.center()).manhattanLength(), 2);
    }
    // Each page in its scroll area, and what is around the pages.
    template <typename Check>
    void ForEachPage(ConfigWindow& window, Check check) {
        auto& pages = *window.findChild<QListWidget*>(QStringLiteral("pages"));
        ASSERT_EQ(pages.count(), 6);
        for (int i = 0; i < pages.count(); ++i) {
            SCOPED_TRACE(pages.item(i)->text().toStdString());
            pages.setCurrentRow(i);
            Settle();
            for (QScrollArea* area : window.findChildren<QScrollArea*>()) {
                if (area->isVisible()) {
                    check(*area);
                }
            }
        }
    }

    QRect screen;
    QtEventPump pump;
};

} // namespace

TEST_P(DialogLayoutTest, TheConfigurationIsCenteredAndItsButtonsAreVisible) {
    const DialogModel model = ConfigModel(10);
    const auto window = Shown<ConfigWindow>(model);
    ExpectCentered(*window);
    EXPECT_LE(window->width(), 1100);
    ForEachPage(*window, [&](const QScrollArea& area) {
        for (const char* name : {"Command_OK", "Command_Cancel"}) {
            const auto* button = window->findChild<QPushButton*>(QLatin1String(name));
            EXPECT_TRUE(window->rect().contains(PlaceIn(*window, *button)));
            EXPECT_FALSE(PlaceIn(*window, area).intersects(PlaceIn(*window, *button)));
            EXPECT_GE(button->height(), kLeastTarget);
        }
    });
}

TEST_P(DialogLayoutTest, NothingOverlapsOrIsCutOnThePagesOfTheConfiguration) {
    DialogModel model = ConfigModel(10);
    model["Label_ZoneListDroite(3)"].value =
        QStringLiteral("CONTROL + PAGE DOWN + F12 + PRINT SCREEN + SCROLL LOCK + BACKSPACE");
    model["Label12"].warns = true;
    model["Command_OK"].enabled = false;
    const auto window = Shown<ConfigWindow>(model);
    ForEachPage(*window, [this](const QScrollArea& area) {
        ExpectNoOverlap(*area.widget());
        ExpectNothingCut(*area.widget());
        ExpectFingerTargets(*area.widget());
        if (screen.width() >= 800) {
            EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0) << "a page does not scroll sideways";
        }
    });
    for (const QWidget* label : {window->findChild<QWidget*>(QStringLiteral("missing"))}) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    }
}

TEST_P(DialogLayoutTest, TheTitlesOfThePagesAreShownInFull) {
    const DialogModel model = ConfigModel(10);
    const auto window = Shown<ConfigWindow>(model);
    auto& pages = *window->findChild<QListWidget*>(QStringLiteral("pages"));
    EXPECT_EQ(pages.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(pages.verticalScrollBar()->maximum(), 0);
    for (int i = 0; i < pages.count(); ++i) {
        EXPECT_GE(pages.visualItemRect(pages.item(i)).height(), kLeastTarget);
        EXPECT_LE(pages.sizeHintForIndex(pages.model()->index(i, 0)).width(), pages.viewport()->width());
    }
}

TEST_P(DialogLayoutTest, FieldsOverAStrangeThemeAreStillUsable) {
    DialogModel model = ConfigModel(10);
    for (auto& [name, look] : model.looks) {
        if (name.startsWith(u"Text_ZoneList")) {
            look.place = name.endsWith(u"(3)") ? QRect(-32768, 32767, -5, 0) : QRect(7, 7, 1, 1);
        }
    }
    for (const bool hasPicture : {true, false}) {
        if (!hasPicture) {
            model["Picture_ZoneList"].picture.reset();
        }
        const auto window = Shown<ConfigWindow>(model);
        window->findChild<QListWidget*>(QStringLiteral("pages"))->setCurrentRow(5);
        Settle();
        const auto& preview = *window->findChild<QWidget*>(QStringLiteral("Picture_ZoneList"));
        ExpectNoOverlap(preview);
        ExpectNothingCut(preview);
    }
}

TEST_P(DialogLayoutTest, TheKeyWindowFits) {
    DialogModel model = KeyModel();
    model["Label_Key"].value = QString(1000, u'W');
    const auto window = Shown<KeyWindow>(model);
    ExpectCentered(*window);
    ExpectNoOverlap(*window);
    ExpectNothingCut(*window);
    ExpectFingerTargets(*window);
}

TEST_P(DialogLayoutTest, TheFolderWindowFits) {
    DialogModel model = FolderModel(100);
    model["Dir1"].entries.append(QStringLiteral("/media/jukebox/") + QString(300, u'W'));
    model["Dir1"].value = model["Dir1"].entries.last();
    const auto window = Shown<FolderWindow>(model);
    ExpectCentered(*window);
    ExpectNoOverlap(*window);
    ExpectNothingCut(*window);
    ExpectFingerTargets(*window);
    const auto& folders = *window->findChild<QListView*>(QStringLiteral("Dir1"));
    EXPECT_GE(folders.height(), 3 * kLeastTarget);
    EXPECT_GE(folders.visualRect(folders.currentIndex()).height(), kLeastTarget);
    EXPECT_GT(folders.horizontalScrollBar()->maximum(), 0) << "a long name can be scrolled to its end";
}

static std::string SizeName(const testing::TestParamInfo<QSize>& screen) {
    return std::to_string(screen.param.width()) + "x" + std::to_string(screen.param.height());
}

INSTANTIATE_TEST_SUITE_P(Screens, DialogLayoutTest,
                         testing::Values(QSize(640, 480), QSize(800, 600), QSize(1280, 720),
                                         QSize(1920, 1080), QSize(1080, 1920)),
                         SizeName);

namespace {

double Linear(int channel) {
    const double share = channel / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

// The contrast of WCAG 2: 1 to 21.
double Contrast(QRgb one, QRgb other) {
    const auto luminance = [](QRgb color) {
        return 0.2126 * Linear(qRed(color)) + 0.7152 * Linear(qGreen(color)) + 0.0722 * Linear(qBlue(color));
    };
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace

TEST(DialogStyleTest, EveryTextIsReadable) {
    EXPECT_NEAR(Contrast(0xFFFFFFFF, 0xFF000000), 21, 0.01);
    for (const TextColors& pair : kDialogTexts) {
        EXPECT_GE(Contrast(pair.text, pair.ground), 4.5) << std::hex << pair.text << " on " << pair.ground;
    }
    EXPECT_GE(Contrast(DialogColors::kAmber, DialogColors::kGround), 3) << "the focus ring";
    EXPECT_GE(Contrast(DialogColors::kEdge, DialogColors::kGround), 3) << "the edge of a field";
}

TEST(DialogStyleTest, TextFollowsTheHeightOfTheScreen) {
    EXPECT_EQ(DialogTextSize({800, 600}), 14);
    EXPECT_EQ(DialogTextSize({1920, 1080}), 18);
    EXPECT_EQ(DialogTextSize({1080, 1920}), 20);
    EXPECT_EQ(DialogTextSize({3840, 2160}), 20);
}

TEST(DialogStyleTest, EveryWordOfTheStyleSheetHasAValue) {
    EXPECT_FALSE(DialogStyleSheet(16).contains(u'@')) << DialogStyleSheet(16).toStdString();
}
