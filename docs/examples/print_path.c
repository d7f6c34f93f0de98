/* print_path MONITOR.EXE: a small print path. It starts the monitor, prints a document in a printer that
   has no paper, and says with which exit code the monitor has ended. */
#include <windows.h>

#include <stdio.h>
#include <string.h>

enum { PRINTER = 1, JOB = 0, STATUS = 2, WAIT_MS = 10000 };
static HANDLE pipe;
static PROCESS_INFORMATION monitor;

/* Waits for the pipe, and no longer than the monitor lives or ten seconds. */
static BOOL finished(BOOL ok, OVERLAPPED *work) {
    HANDLE ends[2] = {work->hEvent, monitor.hProcess};
    DWORD bytes;
    if (ok || GetLastError() == ERROR_PIPE_CONNECTED) return TRUE;
    if (GetLastError() != ERROR_IO_PENDING) return FALSE;
    if (WaitForMultipleObjects(2, ends, FALSE, WAIT_MS) != WAIT_OBJECT_0) CancelIoEx(pipe, work);
    return GetOverlappedResult(pipe, work, &bytes, TRUE);
}

static BOOL write_record(DWORD record_class, DWORD subcode, const void *body, DWORD bytes) {
    const DWORD header[5] = {0x4F4C4556 /* VELO */, record_class, subcode, PRINTER, bytes};
    char record[256];
    OVERLAPPED work = {0};
    BOOL ok;
    if (bytes > sizeof record - sizeof header) return FALSE;
    memcpy(record, header, sizeof header);
    memcpy(record + sizeof header, body, bytes);
    work.hEvent = CreateEventW(NULL, TRUE, FALSE, NULL);
    ok = finished(WriteFile(pipe, record, (DWORD)sizeof header + bytes, NULL, &work), &work);
    CloseHandle(work.hEvent);
    return ok;
}

int wmain(int count, wchar_t **arguments) {
    static const char printer[] = "USB001\0Example printer";      /* port name, printer name */
    static const char document[] = "\7\0\0\0Annual report.pdf";   /* job 7, name of the document */
    const DWORD no_paper = 41100, job = 7;
    wchar_t path[64], command[1024];
    STARTUPINFOW startup = {0};
    OVERLAPPED connecting = {0};
    DWORD code = 0;
    if (count != 2) return fprintf(stderr, "usage: print_path MONITOR.EXE\n"), 2;

    startup.cb = sizeof startup;
    swprintf(path, 64, L"\\\\.\\pipe\\example-%lu", GetCurrentProcessId());
    pipe = CreateNamedPipeW(path, PIPE_ACCESS_OUTBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                            PIPE_TYPE_MESSAGE | PIPE_REJECT_REMOTE_CLIENTS, 1, 65536, 0, 0, NULL);
    swprintf(command, 1024, L"\"%ls\" inputPipe=%ls printerid=%d", arguments[1], path + 9, PRINTER);
    if (pipe == INVALID_HANDLE_VALUE || !CreateProcessW(arguments[1], command, NULL, NULL, FALSE, 0, NULL,
                                                        NULL, &startup, &monitor))
        return fprintf(stderr, "system error %lu\n", GetLastError()), 1;

    connecting.hEvent = CreateEventW(NULL, TRUE, FALSE, NULL);
    if (finished(ConnectNamedPipe(pipe, &connecting), &connecting) &&
        write_record(JOB, 0, printer, sizeof printer) &&
        write_record(JOB, 2, document, sizeof document) &&
        write_record(STATUS, 3, &no_paper, sizeof no_paper)) { /* the alert opens */
        puts("Press Enter when the document has been printed.");
        getchar();
        if (write_record(JOB, 4, &job, sizeof job))          /* alerts about the document close */
            WaitForSingleObject(monitor.hProcess, INFINITE); /* until the last alert is closed */
    }
    CloseHandle(pipe); /* ends a monitor that still runs */
    WaitForSingleObject(monitor.hProcess, WAIT_MS);
    GetExitCodeProcess(monitor.hProcess, &code);
    printf("the monitor has ended with exit code %lu\n", code);
    return code == 0 ? 0 : 1;
}
