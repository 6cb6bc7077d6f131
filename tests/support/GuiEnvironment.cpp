#include <QGuiApplication>

#include <gtest/gtest.h>

#include <memory>

// Tests that lay out text need the application object, but no widgets.

namespace {

class GuiEnvironment : public testing::Environment
{
public:
    void SetUp() override { m_application = std::make_unique<QGuiApplication>(m_count, m_names); }
    void TearDown() override { m_application.reset(); }

private:
    char m_name[5] = "test";
    char *m_names[2] = {m_name, nullptr};
    int m_count = 1;
    std::unique_ptr<QGuiApplication> m_application;
};

[[maybe_unused]] const auto *const kEnvironment =
    testing::AddGlobalTestEnvironment(new GuiEnvironment);

} // namespace
