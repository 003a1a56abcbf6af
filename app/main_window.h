#pragma once

#include "app/labels.h"
#include "app/toolkit_language.h"
#include "lut/lutfile_st.h"

#include <QKeySequence>
#include <QMainWindow>
#include <QVector>

class PressButton;
class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QScrollArea;
class Read_LUTFile;
class TablePictures;

/// The window: an input panel, an output panel, the language selector and the start button.
///
/// What the three buttons do is in conversion_driver.cpp, everything else in main_window.cpp.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    /// Labels every widget in the current language; contents and selections are kept.
    void refreshWindow();

    /// Makes one of \a files the input, as if chosen with the input button: the first that matches
    /// the dialog's first filter, or else the first that is a file, if any.
    void openFiles(const QStringList& files);

    /// Writes \a lut as \a st describes, resampled if \a st asks for another size, and reports the
    /// result in a box.
    void SaveLut(LUTFILE_ST st, Read_LUTFile& lut);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    /// Follows changes of the content's size, of a font, say.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

public Q_SLOTS:
    /// Lets the user choose an input file and shows what it holds.
    void slotInputButton();
    /// Lets the user choose the output file.
    void slotOutputButton();
    /// Runs the conversion.
    void slotWriteLut();

    void slotInCheckBoxChanged(int state);
    void slotInComboxChanged(int index);
    void slotOutCheckBoxChanged(int state);
    void slotOutComboxChanged(int index);
    void slotLanguageChanged(int index);

private:
    /// The order choices of one side. The check box selects the first item of both orders.
    struct OrderBoxes {
        QCheckBox* byDefault;
        QComboBox* data;
        QComboBox* table;
    };

    struct OrderLabels {
        tintwell::Label byDefault;
        tintwell::Label data;
        tintwell::Label table;
    };

    /// A field with a label in front.
    struct FieldCaption {
        tintwell::Label label;
        QWidget* field;
        QLabel* text = nullptr;
    };

    /// A button or check box, which carries its own label.
    struct ButtonCaption {
        tintwell::Label label;
        QAbstractButton* button;
        QKeySequence shortcut;
    };

    QWidget* makeInputPanel();
    QWidget* makeOutputPanel();
    QWidget* makeFooter();
    void connectSignals();
    /// The shortcuts that belong to no button.
    void addShortcuts();
    /// Moves the focus to the start button without pressing it.
    void goToStart();

    /// Fills a row of a panel's grid with one or two fields, and records how they are labelled.
    void addFields(QGridLayout* grid, int row, QVector<FieldCaption> fields);
    void addOrders(QGridLayout* grid, int row, const OrderBoxes& orders, const OrderLabels& labels);

    /// The minimum width of a panel, the same for both.
    int panelWidth() const;
    /// The minimum width of the window with the panels side by side.
    int sideBySideWidth() const;
    /// The minimum height of the content without the panels and the pictures.
    int heightAround() const;
    /// The minimum height that the pictures add to the content.
    int picturesHeight() const;
    /// The minimum height of the content with the panels side by side, without the pictures.
    int sideBySideHeight() const;
    /// The largest size that the window can have on its screen.
    QSize availableSize() const;
    /// Lays the panels out side by side if there is room, else one above the other, and folds the
    /// pictures away where the screen is too low for them.
    void arrangePanels();

    /// Shows, or no longer, that a dragged file would become the input.
    void highlightInput(bool on);

    void takeInput(const QString& path);
    /// Reads the input and writes the output.
    void convert();

    /// Shows what came of the last action, until the next one.
    void setOutcome(QVector<tintwell::Note> notes);
    /// What Begin would do to the files that are chosen now.
    QVector<tintwell::Note> warnings() const;
    QVector<tintwell::Note> outputWarnings() const;
    /// Offers a name for the output beside the input, without filling it in.
    void suggestOutput();
    bool isJustWritten() const;
    /// What is said of a conversion that has succeeded.
    QVector<tintwell::Note> written(const LUTFILE_ST& st, const Read_LUTFile& lut);
    /// Shows the outcome and the warnings.
    void refreshNotes();
    /// Shows what the orders of both sides and the size do together to the lines of the file.
    void refreshOrders();

    static void resetOrders(const OrderBoxes& orders);
    static void clearDefault(const OrderBoxes& orders);
    static LUTFILE_ST request(const QString& path, const OrderBoxes& orders);

    QString inputPath;
    QString outputPath;
    QVector<tintwell::Note> outcome;
    bool inputHas3D = true;
    bool inputHas1D = false;
    bool inputHasDomain = false;
    int language = tintwell::English;
    tintwell::ToolkitLanguage toolkitLanguage;

    PressButton* inputButton = nullptr;
    QLineEdit* inputName = nullptr;
    QLineEdit* inputType = nullptr;
    QLineEdit* inputSize3D = nullptr;
    QLineEdit* inputSize1D = nullptr;
    QLineEdit* inputDimension = nullptr;
    OrderBoxes inputOrders = {};

    PressButton* outputButton = nullptr;
    QLineEdit* outputPathField = nullptr;
    QComboBox* outputType = nullptr;
    QComboBox* outputSize3D = nullptr;
    OrderBoxes outputOrders = {};

    TablePictures* pictures = nullptr;
    QLabel* orderNote = nullptr;
    QLabel* statusNote = nullptr;
    QComboBox* languageBox = nullptr;
    PressButton* startButton = nullptr;

    QVector<FieldCaption> fieldCaptions;
    QVector<ButtonCaption> buttonCaptions;
    QWidget* inputPanel = nullptr;
    QWidget* outputPanel = nullptr;
    QWidget* footer = nullptr;
    QBoxLayout* panels = nullptr;
    QScrollArea* content = nullptr;
    bool inputHighlighted = false;
};
