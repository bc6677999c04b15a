// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Plays a desktop's session manager (XSMP) for one program at a time. Its first output line is the value for
// SESSION_MANAGER. Then it reports each step of the program on a line: "registered", "asks to interact", "cancels",
// "fails to save", "wants to be restarted", "agrees", "closed". It reads commands from its input, one on each line:
//   log-out   Asks the program to save everything, with interaction allowed, as a desktop does at log-out. A program
//             that agrees is told to end.
//   log-out-cancelled-by-another
//             The same, but another program of the session cancels after this one has agreed.
// A restored program is not asked to save when it registers. At log-out it is asked only for its data.
// A program that is asked to save must set RestartStyleHint to never. Otherwise the double reports "wants to be
// restarted", which is the protocol's default. Serves until its input ends.

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#include <X11/SM/SMlib.h>

namespace {

// Why the program is asked to save itself.
enum class Request
{
    Registration, // once for each client that was not restored
    LogOut,
    LogOutCancelledByAnother
};

Request s_request = Request::Registration;
bool s_isCancelled = false;
bool s_isNeverRestarted = false;
bool s_isRestored = false; // from an earlier session
SmsConn s_client = nullptr;

void Tell(const char* event)
{
    std::puts(event);
    std::fflush(stdout);
}

Status RegisterClient(SmsConn client, SmPointer /*data*/, char* previousId)
{
    s_isRestored = previousId != nullptr;
    char* id = s_isRestored ? previousId : SmsGenerateClientID(client);
    SmsRegisterClientReply(client, id);
    std::free(id);
    s_request = Request::Registration;
    s_isNeverRestarted = false;
    if (s_isRestored) {
        Tell("registered");
        return 1;
    }
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    return 1;
}

void LogOut(SmsConn client, Request request)
{
    s_request = request;
    s_isCancelled = false;
    SmsSaveYourself(client, s_isRestored ? SmSaveGlobal : SmSaveBoth, True, SmInteractStyleAny, False);
}

void AllowInteraction(SmsConn client, SmPointer /*data*/, int /*dialogType*/)
{
    Tell("asks to interact");
    SmsInteract(client);
}

void EndInteraction(SmsConn /*client*/, SmPointer /*data*/, Bool isCancelled)
{
    if (isCancelled != False) {
        s_isCancelled = true;
        Tell("cancels");
    }
}

void AllowSecondPhase(SmsConn client, SmPointer /*data*/)
{
    SmsSaveYourselfPhase2(client);
}

void EndSave(SmsConn client, SmPointer /*data*/, Bool isSaved)
{
    if (isSaved == False) {
        Tell("fails to save");
    }
    if (!s_isNeverRestarted) {
        Tell("wants to be restarted");
    }
    if (s_request == Request::Registration) {
        SmsSaveComplete(client);
        Tell("registered");
    } else if (isSaved == False || s_isCancelled) {
        SmsShutdownCancelled(client);
    } else {
        Tell("agrees");
        if (s_request == Request::LogOut) {
            SmsDie(client);
        } else {
            SmsShutdownCancelled(client);
        }
    }
}

// A program may ask for a session-wide save, which the double ignores.
void IgnoreSaveRequest(SmsConn /*client*/, SmPointer /*data*/, int /*type*/, Bool /*isLogOut*/, int /*style*/,
                       Bool /*isFast*/, Bool /*isGlobal*/)
{
}

// The hint is one byte. Qt sends an int. Like the desktops' session managers, read its first byte.
bool IsNeverRestarted(const SmProp& hint)
{
    return std::strcmp(hint.type, SmCARD8) == 0 && hint.num_vals == 1 && hint.vals[0].length >= 1 &&
        *static_cast<const unsigned char*>(hint.vals[0].value) == SmRestartNever;
}

// Only one of a program's properties matters.
void ReadProperties(SmsConn /*client*/, SmPointer /*data*/, int count, SmProp** properties)
{
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(properties[i]->name, SmRestartStyleHint) == 0) {
            s_isNeverRestarted = IsNeverRestarted(*properties[i]);
        }
        SmFreeProperty(properties[i]);
    }
    std::free(properties);
}

void ForgetPropertyNames(SmsConn /*client*/, SmPointer /*data*/, int count, char** names)
{
    SmFreeReasons(count, names);
}

void AnswerNoProperties(SmsConn client, SmPointer /*data*/)
{
    SmsReturnProperties(client, 0, nullptr);
}

void CloseClient(SmsConn client, SmPointer /*data*/, int count, char** reasons)
{
    SmFreeReasons(count, reasons);
    IceConn connection = SmsGetIceConnection(client);
    SmsCleanUp(client);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
}

Status AcceptClient(SmsConn client, SmPointer /*data*/, unsigned long* mask, SmsCallbacks* callbacks,
                    char** /*failureReason*/)
{
    s_client = client;
    callbacks->register_client = {RegisterClient, nullptr};
    callbacks->interact_request = {AllowInteraction, nullptr};
    callbacks->interact_done = {EndInteraction, nullptr};
    callbacks->save_yourself_request = {IgnoreSaveRequest, nullptr};
    callbacks->save_yourself_phase2_request = {AllowSecondPhase, nullptr};
    callbacks->save_yourself_done = {EndSave, nullptr};
    callbacks->close_connection = {CloseClient, nullptr};
    callbacks->set_properties = {ReadProperties, nullptr};
    callbacks->delete_properties = {ForgetPropertyNames, nullptr};
    callbacks->get_properties = {AnswerNoProperties, nullptr};
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
        SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
        SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    return 1;
}

// The sandbox protects the socket, so every client is admitted.
Bool AdmitHost(char* /*hostName*/)
{
    return True;
}

// Replaces the library's handler, which ends the program when a client is killed.
void SurviveLostClient(IceConn /*connection*/) { }

std::vector<IceListenObj> Listen()
{
    // The library would create this folder for root only.
    mkdir("/tmp/.ICE-unix", S_IRWXU | S_IRWXG | S_IRWXO | S_ISVTX);
    std::array<char, 256> error{};
    const int errorLength = static_cast<int>(error.size());
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (SmsInitialize("session-manager-double", "1", AcceptClient, nullptr, AdmitHost, errorLength, error.data()) ==
            0 ||
        IceListenForConnections(&count, &listeners, errorLength, error.data()) == 0) {
        std::fprintf(stderr, "session-manager-double: cannot listen: %s\n", error.data());
        std::exit(1);
    }
    for (int i = 0; i < count; ++i) {
        IceSetHostBasedAuthProc(listeners[i], AdmitHost);
    }
    IceSetIOErrorHandler(SurviveLostClient);
    Tell(IceComposeNetworkIdList(count, listeners));
    return {listeners, listeners + count};
}

IceConn Accept(IceListenObj listener)
{
    IceAcceptStatus status = IceAcceptFailure;
    IceConn connection = IceAcceptConnection(listener, &status);
    while (connection != nullptr && IceConnectionStatus(connection) == IceConnectPending) {
        IceProcessMessages(connection, nullptr, nullptr);
    }
    return connection;
}

// Returns false when the client has gone.
bool ServeClient(IceConn connection)
{
    const IceProcessMessagesStatus status = IceProcessMessages(connection, nullptr, nullptr);
    if (status == IceProcessMessagesSuccess) {
        return true;
    }
    if (status == IceProcessMessagesIOError) {
        IceSetShutdownNegotiation(connection, False);
        IceCloseConnection(connection);
    }
    s_client = nullptr;
    Tell("closed");
    return false;
}

// Returns false at the end of the input.
bool ObeyInput()
{
    std::array<char, 64> line{};
    if (read(STDIN_FILENO, line.data(), line.size() - 1) <= 0) {
        return false;
    }
    const bool isCancelled = std::strcmp(line.data(), "log-out-cancelled-by-another\n") == 0;
    if (s_client != nullptr) {
        LogOut(s_client, isCancelled ? Request::LogOutCancelledByAnother : Request::LogOut);
    }
    return true;
}

std::vector<pollfd> Sources(const std::vector<IceListenObj>& listeners, IceConn connection)
{
    std::vector<pollfd> sources{{STDIN_FILENO, POLLIN, 0}};
    if (connection != nullptr) {
        sources.push_back({IceConnectionNumber(connection), POLLIN, 0});
        return sources;
    }
    for (IceListenObj listener : listeners) {
        sources.push_back({IceGetListenConnectionNumber(listener), POLLIN, 0});
    }
    return sources;
}

} // namespace

int main()
{
    // Ignore SIGPIPE: writing to a client that has just ended must not end the double.
    std::signal(SIGPIPE, SIG_IGN);
    const std::vector<IceListenObj> listeners = Listen();
    IceConn connection = nullptr;
    while (true) {
        std::vector<pollfd> sources = Sources(listeners, connection);
        poll(sources.data(), sources.size(), -1);
        if (sources.front().revents != 0 && !ObeyInput()) {
            return 0;
        }
        for (std::size_t i = 1; i < sources.size(); ++i) {
            if (sources[i].revents == 0) {
                continue;
            }
            if (connection == nullptr) {
                connection = Accept(listeners[i - 1]);
            } else if (!ServeClient(connection)) {
                connection = nullptr;
            }
        }
    }
}
