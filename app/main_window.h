#pragma once

#include "app/labels.h"
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
class Read_LUTFile;

/// The window: an input panel, an output panel, the language selector and the start button.
///
/// The conversion behind the three buttons is in conversion_driver.cpp, all else in
/// main_window.cpp.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    /// Labels every widget in the current language; contents and selections stay.
    void refreshWindow();

    /// Makes one of \a files the input, as if it had been chosen with the input button: the first
    /// of those that the button's dialog shows at once, else the first file at all, if any.
    void openFiles(const QStringList& files);

    /// Writes \a lut as \a st says, resampled where \a st asks for another size, and reports the
    /// result in a box.
    void SaveLut(LUTFILE_ST st, Read_LUTFile& lut);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
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
    /// The order choices of one side. The check box stands for both orders at their first item.
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

    /// A field with its label in front.
    struct FieldCaption {
        tintwell::Label label;
        QWidget* field;
        QLabel* text = nullptr;
    };

    /// A button or check box that carries its own label.
    struct ButtonCaption {
        tintwell::Label label;
        QAbstractButton* button;
        QKeySequence shortcut;
    };

    QWidget* makeInputPanel();
    QWidget* makeOutputPanel();
    QWidget* makeFooter();
    void connectSignals();

    /// Fills a row of a panel's grid with one field or with two, and notes how they are labelled.
    void addFields(QGridLayout* grid, int row, QVector<FieldCaption> fields);
    void addOrders(QGridLayout* grid, int row, const OrderBoxes& orders, const OrderLabels& labels);

    /// The least width of a panel, the same for both.
    int panelWidth() const;
    /// The least width of the window with the panels side by side.
    int sideBySideWidth() const;
    /// Lays the panels out side by side where there is room, else one above the other.
    void arrangePanels();

    void takeInput(const QString& path);

    static void resetOrders(const OrderBoxes& orders);
    static void clearDefault(const OrderBoxes& orders);
    static LUTFILE_ST request(const QString& path, const OrderBoxes& orders);

    QString inputPath;
    QString outputPath;
    int language = tintwell::English;

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

    QComboBox* languageBox = nullptr;
    PressButton* startButton = nullptr;

    QVector<FieldCaption> fieldCaptions;
    QVector<ButtonCaption> buttonCaptions;
    QWidget* inputPanel = nullptr;
    QWidget* outputPanel = nullptr;
    QWidget* footer = nullptr;
    QBoxLayout* panels = nullptr;
};
