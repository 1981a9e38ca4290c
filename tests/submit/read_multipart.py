#!/usr/bin/env python3
"""Reads one recorded HTTP request and prints its multipart form as JSON, as Python's
email package understands it: per part the Content-Disposition, the Content-Type as
sent (empty when absent), the field name and the body in hex; plus any defects found."""
import email.parser
import email.policy
import json
import sys


def main(path):
    with open(path, 'rb') as f:
        raw = f.read()
    head, _, body = raw.partition(b'\r\n\r\n')
    content_type = None
    for line in head.split(b'\r\n')[1:]:
        key, _, value = line.partition(b':')
        if key.strip().lower() == b'content-type':
            content_type = value.strip()
    if content_type is None:
        sys.exit('no Content-Type header')
    message = email.parser.BytesParser(policy=email.policy.HTTP).parsebytes(
        b'Content-Type: ' + content_type + b'\r\n\r\n' + body)
    if not message.is_multipart():
        sys.exit('not multipart: ' + message.get_content_type())
    parts = []
    defects = [str(d) for d in message.defects]
    for part in message.iter_parts():
        defects += [str(d) for d in part.defects]
        parts.append({
            'disposition': str(part.get('content-disposition', '')),
            'type': str(part.get('content-type', '')),
            'name': part.get_param('name', header='content-disposition') or '',
            'body': part.get_payload(decode=True).hex(),
        })
    print(json.dumps({'defects': defects, 'parts': parts}))


if __name__ == '__main__':
    main(sys.argv[1])
