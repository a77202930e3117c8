#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "copies/CopiesModel.h"
#include "copies/CopyKeeper.h"

#include <functional>
#include <memory>

namespace Ui {
class frmCopies;
}

namespace copies {

/// The copies of the desk, and what can be done with them. Deletes itself when closed.
class frmCopies : public appearance::Form
{
    Q_OBJECT

public:
    /// The customers of a copy are shown by another folder's window.
    using LookInto = std::function<void(const Copy &copy)>;

    /// The keeper must outlive the form.
    frmCopies(const appearance::FormContext &context, CopyKeeper &keeper, LookInto lookInto);
    ~frmCopies() override;

private:
    void setUpGrid();
    void connectButtons();
    void showCopies();
    void offerCommands();
    void withCurrent(const std::function<void(const Copy &)> &command);

    appearance::FormContext m_context;
    CopyKeeper &m_keeper;
    LookInto m_lookInto;
    CopiesModel m_copies;
    std::unique_ptr<Ui::frmCopies> m_ui;
};

} // namespace copies
