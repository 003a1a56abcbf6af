#pragma once

#include <QString>

namespace tintwell {

/// The languages of the window, in the order of the language selector.
enum Language : int { English, SimplifiedChinese };

/// The labels, in the order of the label tables: input panel, output panel, the rest.
enum class Label {
    InputFile,
    InputName,
    InputType,
    InputDefaultOrder,
    InputDataOrder,
    InputTableOrder,
    InputSize3D,
    InputSize1D,
    InputDimension,
    OutputFile,
    OutputPath,
    OutputType,
    OutputSize3D,
    OutputDefaultOrder,
    OutputDataOrder,
    OutputTableOrder,
    Language,
    Begin,
};

/// The label in \a language; in English for any value that is not a language of the window.
QString labelText(int language, Label label);

/// A short description of the start button.
QString startHint(int language);

/// What the window says beside its labels. %1 stands for a name or a reason.
enum class Message {
    SamplesUnchanged,
    ChannelsSwapped,
    AxesSwapped,
    BothSwapped,
    DefaultOrderHint,
    DataOrderHint,
    TableOrderHint,
    InputPicture,
    OutputPicture,
    SlicesHint,
    CurvesHint,
    NoInput,
    NoTable,
    TooLarge,
    NoLattice,
    Written,
    Remark,
    ReadFailed,
    PreviewFailed,
    WriteFailed,
    NotACube,
    CurveLost,
    DomainLost,
    OutputIsInput,
    OutputExists,
    OutputProtected,
    OutputNoFile,
    NoCubeName,
    NoFolder,
};

/// The message in \a language; in English for any value that is not a language of the window.
QString messageText(int language, Message message, const QString& argument = QString());

/// What is said of an action or of the choices, in whatever language the window has.
struct Note {
    Message message;
    QString argument = {};
};

QString noteText(int language, const Note& note);

/// A file's name as an argument of a command that a user may copy into a shell.
QString shellWord(const QString& name);

} // namespace tintwell
