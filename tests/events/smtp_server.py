#!/usr/bin/python3
"""A real SMTP server on a free loopback port, for the tests of what sends mail.

Prints {"port": N} first, then a JSON line for each login try and each mail. A line on its standard input, options
again, has the next sessions run by these; TLS stays as it was. Ends when its standard input closes.
"""
import argparse
import asyncio
import email
import email.policy
import json
import logging
import ssl
import sys
import warnings

try:
    from aiosmtpd.smtp import SMTP, AuthResult
except ImportError:
    sys.exit("smtp_server.py needs aiosmtpd: apt-get install python3-aiosmtpd")

STEPS = ["GREETING", "EHLO", "AUTH", "MAIL", "RCPT", "DATA", "TEXT"]


def tell(**values):
    print(json.dumps(values), flush=True)


def decoded(content):
    """Subject and text as a mail reader shows them."""
    mail = email.message_from_bytes(content, policy=email.policy.default)
    return {"subject": mail["Subject"], "body": mail.get_content(), "defects": [str(d) for d in mail.defects]}


class Mails:
    """Takes mails with an answer in small letters, as some clients look for it."""

    async def handle_DATA(self, server, session, envelope):
        if not await server.meet("TEXT"):
            return "554 refused at TEXT"
        encrypted = server.transport.get_extra_info("ssl_object") is not None
        tell(sender=envelope.mail_from, to=envelope.rcpt_tos, tls=encrypted,
             login=bool(session.authenticated), message=envelope.original_content.decode(),
             **decoded(envelope.original_content))
        return "250 ok, mail taken"


class Server(SMTP):
    """Plays the fault that the options name, at the step that they name."""

    def __init__(self, options, handler, **arguments):
        super().__init__(handler, **arguments)
        self.options = options
        self.greeted = False

    async def meet(self, step):
        """False: refuse. The connection may be gone afterwards."""
        if self.options.slow:
            await asyncio.sleep(self.options.slow / 1000)
        if self.options.close == step:
            self.transport.abort()
            raise asyncio.CancelledError
        return self.options.refuse != step

    async def push(self, status):
        if not self.greeted:
            self.greeted = True
            if not await self.meet("GREETING"):
                status = "554 refused at GREETING"
        await super().push(status)


def guarded(step, method):
    async def command(self, arg):
        bad_recipient = step == "RCPT" and self.options.unknown and self.options.unknown in arg
        if not await self.meet(step) or bad_recipient:
            return await self.push(f"550 refused at {step}")
        return await method(self, arg)
    return command


for name in STEPS[1:6]:
    setattr(Server, "smtp_" + name, guarded(name, getattr(SMTP, "smtp_" + name)))


def arguments(words):
    parser = argparse.ArgumentParser()
    parser.add_argument("--login", metavar="USER:PASSWORD", help="nobody sends without it")
    parser.add_argument("--tls", action="store_true", help="from the first byte")
    parser.add_argument("--starttls", action="store_true")
    parser.add_argument("--cert")
    parser.add_argument("--key")
    parser.add_argument("--refuse", choices=STEPS)
    parser.add_argument("--close", choices=STEPS)
    parser.add_argument("--unknown", metavar="PART", help="refuses recipients whose address holds it")
    parser.add_argument("--slow", type=int, default=0, metavar="MS", help="before each answer")
    return parser.parse_args(words)


async def serve(options):
    context = None
    if options.cert:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(options.cert, options.key)

    def check(_server, _session, _envelope, _mechanism, data):
        text = f"{data.login.decode()}:{data.password.decode()}"
        tell(tried=text)
        return AuthResult(success=options.login in (None, text), handled=False, auth_data=data.login.decode())

    def session():
        return Server(options, Mails(), hostname="localhost", auth_require_tls=False,
                      auth_required=options.login is not None, authenticator=check, enable_SMTPUTF8=True,
                      tls_context=context if options.starttls else None, require_starttls=options.starttls)

    loop = asyncio.get_running_loop()
    server = await loop.create_server(session, "127.0.0.1", 0, ssl=context if options.tls else None)
    tell(port=server.sockets[0].getsockname()[1])
    while line := await loop.run_in_executor(None, sys.stdin.readline):
        new = arguments(line.split())
        for name in ("login", "refuse", "close", "unknown", "slow"):
            setattr(options, name, getattr(new, name))
        tell(set=line.split())


logging.disable(logging.CRITICAL)  # what it would tell is the clients' fault, and wanted
warnings.simplefilter("ignore")
asyncio.run(serve(arguments(sys.argv[1:])))
