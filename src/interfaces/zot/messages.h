#pragma once

#include <atomic>
#include <zot/export.h>

// The message subsystem. Modules that use it register when they are loaded and take the registration back
// when they are unloaded; the first one brings the subsystem up, the last one takes it down.
namespace ZOTMessages {

QUILL_API void Init();
QUILL_API void Free();

}  // namespace ZOTMessages

// One registration, for the lifetime of the object. Meant for static objects.
class QUILL_API ZOTMessagesInit {
public:
    ZOTMessagesInit();
    ~ZOTMessagesInit();
    ZOTMessagesInit(const ZOTMessagesInit&) = delete;  // one object, one registration
    ZOTMessagesInit& operator=(const ZOTMessagesInit&) = delete;

    static std::atomic<long> m_cnt;  // registrations at this moment
};
