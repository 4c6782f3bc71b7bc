"""The passwords of locked files in the corpus, by file name."""

PASSWORDS = {
    "c-r2.pdf": "user1",
    "c-r5-in.pdf": "user3",
    "enc-R3,V2,U=view,O=view.pdf": "view",
    "enc-XI-R6,V5,U=attachment,encrypted-attachments.pdf": "attachment",
    "enc-XI-R6,V5,U=wwwww,O=wwwww.pdf": "wwwww",
    "enc-XI-long-password.pdf": ("qwertyuiopasdfghjklzxcvbnm" * 5)[:127],
    "encrypted-40-bit-R3.pdf": "623",
    "libreoffice-writer-password.pdf": "openpassword",
    "nontrivial-crypt-filter.pdf": "asdfqwer",
}

# Only their attachments are locked, so they open and are copied without a question, and without these.
ONLY_ATTACHMENTS_LOCKED = {
    "enc-XI-R6,V5,U=attachment,encrypted-attachments.pdf",
    "nontrivial-crypt-filter.pdf",
}
