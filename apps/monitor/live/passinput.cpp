#include "passinput.h"

PassInput::PassInput(std::unique_ptr<ByteInput> input, std::unique_ptr<StreamOpener> opener)
    : m_opener(std::move(opener))
    , m_cancelled(false)
    , m_input(std::move(input))
{
}

bool PassInput::open(OpenedStream* stream)
{
    if (!m_input->open()) {
        m_error = m_input->getErrorString();
        return false;
    }
    if (m_opener->run(
            m_input.get(), [this] { return !m_cancelled; }, nullptr) != StreamOpener::Opened) {
        m_error = m_opener->getErrorString();
        return false;
    }
    *stream = m_opener->takeStream();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_input = m_opener->takeInput(std::move(m_input));
    }
    m_error = m_opener->getErrorString();
    return m_error.isEmpty() && !m_cancelled;
}

void PassInput::cancel()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_cancelled = true;
    m_input->cancel();
}
