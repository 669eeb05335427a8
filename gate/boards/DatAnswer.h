#pragma once

#include "boards/Archives.h"
#include "boards/Log.h"
#include "boards/Shop.h"
#include "boards/Thread.h"
#include "origin/Location.h"

#include <optional>

namespace gate {

// Answers one request for a dat that its server has as a file. Of what the program holds it asks
// for the last byte again: when that is no line feed any more, the file has changed before it.
// Lives for one request, on the connection's thread.
class DatAnswer {
public:
    DatAnswer(const Shop& shop, ThreadAddress thread, const Wanted& wanted, Responder* responder);

    void Run();

private:
    void _PlanRange();
    bool _Ask();
    void _Judge();
    void _AnswerWhole();
    void _AnswerRange();
    void _AnswerCut();
    void _AnswerByLines();
    void _AnswerRangeRefused();
    void _AnswerDropped();
    void _AnswerNoDat();
    void _AnswerFailure(const std::string& failure);
    void _Pass(size_t start, int64_t total);
    void _PassHeld(size_t start);
    void _PassStreamed(size_t start, int64_t size, int64_t beyond);
    void _NoteGiven(int64_t size);
    bool _WaitForBytes(size_t size);
    bool _WaitForLine();
    bool _IsDropped() const;
    time_t _Date() const;

    const Shop& fShop;
    ThreadAddress fThread;
    const Wanted fWanted;
    Responder* const fResponder;
    const Deadline fDeadline;

    // The place in the server's file that the program's length stands for, and the lines before it;
    // −1: not known, all is looked through.
    int64_t fOffset = -1;
    int64_t fLines = -1;
    bool fIsByLines = false;
    OriginRequest fRequest;
    std::shared_ptr<Transfer> fTransfer;
    OriginHead fHead;
};

} // namespace gate
