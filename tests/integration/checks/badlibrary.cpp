namespace Vesmar
{

class CRC16
{
public:
    int Calculate();
};

int CRC16::Calculate()
{
    return 0;
}

} // namespace Vesmar
