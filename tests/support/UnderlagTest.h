#pragma once

#include "support/ModuleTest.h"
#include "support/Underlag.h"

/// A test of the module on the kind of database that its program stands on.
class UnderlagTest : public ModuleTest
{
protected:
    /// The database goes away before the module's own turn.
    ~UnderlagTest() override { reload(); }

    QString connectionString() const override
    {
        return m_underlag->connectionString(ModuleTest::connectionString());
    }
    [[nodiscard]] const Underlag &underlag() const { return *m_underlag; }

private:
    const std::unique_ptr<Underlag> m_underlag = makeUnderlag();
};
