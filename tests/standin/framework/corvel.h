#ifndef CORVEL_H
#define CORVEL_H

class Corvel
{
public:
    static bool confidentialInformationDisplayEnabled() { return showConfidential; }

    static bool showConfidential;
};

#endif
