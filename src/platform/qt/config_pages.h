// The pages of Form_Config.
#pragma once

class DialogWindow;
class QWidget;

// Each makes a page and the controls on it.
QWidget* MusicPage(DialogWindow& window);
QWidget* ScreenPage(DialogWindow& window);
QWidget* ZonesPage(DialogWindow& window);
QWidget* CoinsPage(DialogWindow& window);
// `width` is that of the page, in heights of its text: a wide page has two columns of keys.
QWidget* KeysPage(DialogWindow& window, int width);
QWidget* SlotsPage(DialogWindow& window);
