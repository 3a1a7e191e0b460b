// SPDX-License-Identifier: MIT
#pragma once

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "tests/support/random.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <vector>

namespace zeltest {

// One thing that is done to a project.
struct Step
{
    enum class Kind { Place, Reset, Remove, Restore, Configure, Set, Undo, Redo, Save, Reopen };

    explicit Step(Kind what)
        : kind(what)
    { }

    Kind kind;
    QString resource;
    int site = -1;
    QString key;
    QString value;

    // As one would type it into the console.
    [[nodiscard]] QString text() const;
};

// A project that is changed, saved, left without saving and opened again some thousand times in a few seconds: its
// device and design files are read only once, and its working folder lies in memory where there is a file system there.
class ChangingProject
{
public:
    // Ends the program when the project cannot be opened.
    explicit ChangingProject(const QString& projectFolder);

    // As nobody has changed it yet.
    void startOver();

    // Which resources randomStep() is to be about: of few, more steps have to do with each other.
    void chooseFew(Random& random);
    // Something that one might do to it as it is.
    [[nodiscard]] Step randomStep(Random& random) const;

    // Does it, and returns what is wrong then: a state that saving, undoing, redoing or opening did not keep or bring
    // back. A change that the editor refuses is not wrong. Empty: nothing is.
    [[nodiscard]] QString perform(const Step& step);

private:
    // All that a program that opens the project must find again.
    struct State
    {
        std::vector<int> sites; // of the resources in the order of the tree; Gone for what is removed
        QStringList removed; // by a command of its own
        QStringList configured; // what is not as in the design file
        mirn::zelengine::SettingChanges settings;

        [[nodiscard]] bool operator==(const State& other) const;
    };

    void open();
    [[nodiscard]] Step randomChange(Random& random) const;
    [[nodiscard]] QString answerTo(const Step& step);
    [[nodiscard]] QString faultOfOpening();
    [[nodiscard]] State state() const;
    [[nodiscard]] QString complaint(const State& expected) const;

    std::unique_ptr<mirn::zelengine::ReferenceEngine> m_engine;
    const mirn::zelengine::Design m_pristine;
    const std::vector<int> m_resources; // in the order of the tree
    std::vector<int> m_few;
    const std::vector<Step> m_settings; // all that can be set
    const QTemporaryDir m_folder;
    std::unique_ptr<mirn::zelchip::DesignEditor> m_editor;
    std::vector<std::optional<State>> m_states; // by position in the undo history; none where it was not seen
    QStringList m_said; // when the project was opened
};

} // namespace zeltest
