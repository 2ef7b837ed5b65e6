#include <zot/messages.h>

// The library keeps no log and sends no messages, so bringing the subsystem up and down moves no resource.
// The counter tells hosts and tests whether it is up.
namespace ZOTMessages {

void Init() {}
void Free() {}

}  // namespace ZOTMessages

std::atomic<long> ZOTMessagesInit::m_cnt{0};

ZOTMessagesInit::ZOTMessagesInit() {
    if (m_cnt.fetch_add(1) == 0) ZOTMessages::Init();
}

ZOTMessagesInit::~ZOTMessagesInit() {
    if (m_cnt.fetch_sub(1) == 1) ZOTMessages::Free();
}
