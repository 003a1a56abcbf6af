#pragma once

#include "app/labels.h"
#include "lut/catalogue.h"

#include <QWidget>

#include <memory>
#include <optional>

class QLabel;
class QThread;
class Read_LUTFile;
class TableView;

/// Pictures of what the input does and of what the written file will do, side by side.
///
/// The input is read in the background, so that the window never waits for it, and kept only while
/// the pictures can be seen.
class TablePictures : public QWidget {
    Q_OBJECT

public:
    explicit TablePictures(QWidget* parent = nullptr);
    ~TablePictures() override;

    void setLanguage(int language);
    /// Shows the file as it is now. \a size3D is the size of its lattice, 0 if that is unknown.
    void setInput(const QString& path, int size3D);
    /// Reads the input again.
    void refresh();
    /// How the file is read and written: the orders of both sides and the size of the output.
    void setConversion(const tintwell::Orders& in, const tintwell::Orders& out, int size);

protected:
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// A table, or what is said in its place.
    struct Side {
        QLabel* caption;
        TableView* view;
        std::unique_ptr<Read_LUTFile> table = nullptr;
        std::optional<tintwell::Note> note = {};

        void clear();
        QString description(int language) const;
        void show(int language, tintwell::Message name) const;
    };

    struct Reading;

    Side makeSide(const char* name);
    void forget();
    void startReading();
    void take(Reading& reading);
    void makeWritten();
    void showSides();

    int m_language = tintwell::English;
    QString m_path;
    int m_size3D = 0;
    tintwell::Orders m_in = {};
    tintwell::Orders m_out = {};
    int m_outputSize = 0;
    Side m_input;
    Side m_written;
    std::unique_ptr<QThread> m_reader;  ///< while it runs
    std::shared_ptr<Reading> m_reading; ///< whose result is wanted, if any
    bool m_isAwaited = false;           ///< whether the reader is to begin again
};
