#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <string>

class QDialog;
class QGroupBox;
class QIcon;
class QLabel;
class QListWidget;
class QWidget;

namespace Tamber {

/// How much larger than designed the windows are: 1 with a system font below 12 points; from there
/// on its proportion to 9 points, as long as the dialogs fit the screen.
double DesignFactor();

/// The windows are designed in twips, 1/1440 inch. At 96 dots per inch and with a DesignFactor of
/// 1, a device-independent pixel is 15 twips; Qt scales those pixels to the display.
int Pixels(int twips);

/// Puts `control` at a place and size given in twips, and names it.
void Place(QWidget& control, const char* name, int left, int top, int width, int height);

/// Gives a dialog its caption, the font of dialogs and a client area of this size in twips, with no
/// minimise or maximise button.
void DesignDialog(QDialog& dialog, const char* name, const char* caption, int width, int height);

/// Moves a window that is about to be shown to the middle of its screen.
void CentreOnScreen(QWidget& window);

/// The row of a list that is highlighted, from 0; -1 when none is.
int HighlightedRow(const QListWidget& list);

/// The program's icon, sharp at 16, 32, 48 and 256 pixels.
QIcon ApplicationIcon();

/// The fonts of the windows, or the closest ones that the system has. Sizes are in points at 96
/// dots per inch and grow with the DesignFactor, so that a text keeps its proportion to its
/// control.
QFont SansSerifFont(double points = 8.25);
QFont CourierFont(double points, bool bold);
QFont ComicFont(double points);  // bold italic

/// Has a check box, an option button or a text box drawn in one way, whatever the desktop's style
/// makes of them: a style with wide margins leaves no room for what they show.
void DrawAsDesigned(QWidget& control);

/// A frame with its caption in the upper line, as the windows are designed for, whatever the
/// desktop's style makes of frames.
QGroupBox* MakeFrame(const QString& caption, QWidget* parent);

/// A text that came from outside the program (a device name, a file name). Bytes that are not
/// UTF-8 are taken as Latin-1; what is no letter or turns the text round gets a visible sign.
QString OutsideText(const std::string& bytes);

/// Such a text as a tool tip, which would be taken for markup if it looked like it.
QString OutsideToolTip(const std::string& bytes);

/// `font`, narrowed by up to a quarter if `text` is wider than `width` pixels.
QFont Fitted(QFont font, const QString& text, int width);

/// The same, and made smaller if `text` is still too wide.
QFont FittedWhole(QFont font, const QString& text, int width);

/// Shows `text` in `label`, fitted; one that is still too wide is shortened in its middle. A text
/// that is already there is not painted again.
void ShowFitted(QLabel& label, const QString& text);

}  // namespace Tamber
